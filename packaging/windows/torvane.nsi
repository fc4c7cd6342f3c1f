; SPDX-License-Identifier: MIT
; The installer for Windows, compiled by MakeInstaller.cmake, which hands in the names in ${CAPITALS}.
;
;   torvane-...-setup.exe [/S] [/AllUsers | /CurrentUser] [/D=FOLDER]
;
; /S asks nothing; /D stands last and takes no quotes. Who may, installs for all users by default. It ends with 0 when all
; is done, with 2 when nothing was (a file of ours is in use, a folder can't be written), and with 3 when all is done but
; for the entry of the PATH. The uninstaller does alike.
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestSupportedOS all
ManifestDPIAware true

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR Torvane
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_FUNCTION TakeFormerFolder
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include ${FILES}

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Torvane"

Name Torvane
OutFile ${INSTALLER}
BrandingText "Torvane ${VERSION}"
VIProductVersion ${VERSION}.0
VIAddVersionKey CompanyName "${PUBLISHER}"
VIAddVersionKey FileDescription "Torvane's installer"
VIAddVersionKey FileVersion ${VERSION}.0
VIAddVersionKey LegalCopyright "© The Torvane authors. MIT licence"
VIAddVersionKey ProductName Torvane
VIAddVersionKey ProductVersion ${VERSION}.0

!define MUI_ICON ${ICON}
!define MUI_UNICON ${ICON}
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Var WantedFolder ; by /D

; GiveUp TEXT: before anything is changed.
!macro GiveUp text
    MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
    SetErrorLevel 2
    Quit
!macroend

; RefuseWhenInUse FILE: a program that runs can't be written, and Delete and File say so to nobody in a silent run.
!macro RefuseWhenInUse file
    ${If} ${FileExists} "$INSTDIR\${file}"
        ClearErrors
        FileOpen $0 "$INSTDIR\${file}" a
        ${If} ${Errors}
            !insertmacro GiveUp "$INSTDIR\${file} is in use, or may not be changed. Close Torvane and try again."
        ${EndIf}
        FileClose $0
    ${EndIf}
!macroend

; ChangePath add|remove: by a program of our own, since texts of NSIS end at 1,024 characters, and a PATH may be longer.
!macro ChangePath action
    InitPluginsDir
    File "/oname=$PLUGINSDIR\torvane_path_entry.exe" ${PATH_ENTRY}
    nsExec::Exec '"$PLUGINSDIR\torvane_path_entry.exe" ${action} $MultiUser.InstallMode "$INSTDIR"'
    Pop $0
    ${If} $0 != 0
        SetErrorLevel 3
        MessageBox MB_OK|MB_ICONEXCLAMATION "The PATH could not be changed ($0). All else is done." /SD IDOK
    ${EndIf}
!macroend

; Shortcut NAME PROGRAM ARGUMENTS
!macro Shortcut name program arguments
    CreateShortcut "$SMPROGRAMS\Torvane\${name}.lnk" "${program}" '${arguments}' "$INSTDIR\torvane_console.exe"
!macroend

Function .onInit
    StrCpy $WantedFolder $INSTDIR
    !insertmacro MULTIUSER_INIT
FunctionEnd

Function un.onInit
    !insertmacro MULTIUSER_UNINIT
FunctionEnd

; An update goes where the version before is, unless /D says otherwise.
Function TakeFormerFolder
    ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" InstallLocation
    ${If} $0 != ""
        StrCpy $INSTDIR $0
    ${EndIf}
    ${If} $WantedFolder != ""
        StrCpy $INSTDIR $WantedFolder
    ${EndIf}
FunctionEnd

; The version before removes itself, since it alone knows its files. It waits for the end and leaves its own file.
Function RemoveFormerVersion
    ReadRegStr $1 SHCTX "${UNINSTALL_KEY}" InstallLocation
    ${If} $1 == ""
    ${OrIfNot} ${FileExists} "$1\uninstall.exe"
        Return
    ${EndIf}
    ExecWait '"$1\uninstall.exe" /S /$MultiUser.InstallMode _?=$1' $0
    ${If} $0 == 2
        !insertmacro GiveUp "The version before, in $1, could not be removed. Close Torvane and try again."
    ${EndIf}
    Delete "$1\uninstall.exe"
    RMDir $1
FunctionEnd

Section
    !insertmacro LookForUse
    Call RemoveFormerVersion
    ClearErrors
    !insertmacro UnpackFiles
    SetOutPath $INSTDIR
    WriteUninstaller "$INSTDIR\uninstall.exe"
    ${If} ${Errors}
        !insertmacro GiveUp "$INSTDIR could not be written."
    ${EndIf}

    WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName Torvane
    WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion ${VERSION}
    WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\torvane_console.exe"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher "${PUBLISHER}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation $INSTDIR
    WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
    WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S /$MultiUser.InstallMode'
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" EstimatedSize ${KILOBYTES}
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1

    ; A program of the terminal gets a command line that stays, or its words would vanish with it.
    CreateDirectory "$SMPROGRAMS\Torvane"
    !if /FileExists ${STAGE}/torvane_gui.exe
        !insertmacro Shortcut "Torvane" "$INSTDIR\torvane_gui.exe" ""
    !endif
    !insertmacro Shortcut "Torvane in the terminal" "$SYSDIR\cmd.exe" '/k ""$INSTDIR\torvane_console.exe""'
    !if /FileExists ${STAGE}/torvane.exe
        !insertmacro Shortcut "Torvane for scripts" "$SYSDIR\cmd.exe" '/k ""$INSTDIR\torvane.exe" --help"'
    !endif

    !insertmacro ChangePath add
SectionEnd

Section Uninstall
    !insertmacro LookForUse
    !insertmacro ChangePath remove
    Delete "$SMPROGRAMS\Torvane\Torvane.lnk"
    Delete "$SMPROGRAMS\Torvane\Torvane in the terminal.lnk"
    Delete "$SMPROGRAMS\Torvane\Torvane for scripts.lnk"
    RMDir "$SMPROGRAMS\Torvane"
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
    !insertmacro RemoveFiles
    Delete "$INSTDIR\uninstall.exe"
    SetOutPath $TEMP ; a current folder can't be removed
    RMDir $INSTDIR
    ${If} $EXEDIR != $INSTDIR ; the copy that runs; NSIS has Windows delete the file with its next start, not the folder
        RMDir /REBOOTOK $EXEDIR
    ${EndIf}
SectionEnd
