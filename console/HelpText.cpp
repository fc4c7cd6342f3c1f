// SPDX-License-Identifier: MIT
// Kept to 80 columns, since it is read on terminals.
#include "HelpText.h"

const char *const helpFooter = R"(Which options act together:
  A run first asks which camera it is about, unless --serial says so or there is
  only one. A camera without password protection then ends it.
  With a password (--password or --password-file) there is no menu. What is done
  depends on the password in force:

    in force         --new-password  --unlock  what is done
    the user's       given           any       change it
    the user's       -               any       unlock
    factory default  given           any       change it
    factory default  -               given     unlock
    factory default  -               -         say that it must be changed

  Then --lock locks, and the run ends.
  Without a password, --lock locks and ends the run, and without --lock the menu
  opens; --new-password (or its file) and --unlock have no effect.
  --factory-reset comes before all of these and ends the run. It does nothing to
  a camera without password protection.
  The lists take no other option. For producers in a folder of your own, name it
  in GENICAM_GENTL64_PATH.

Passwords:
  A password on the command line can be seen by other users of the machine. Give
  it by --password-file and --new-password-file instead. The first line counts,
  up to 4096 bytes; a byte-order mark before it and one carriage return at its
  end are dropped. FILE may be "-", standard input. With "-" for both, it gives
  two lines, the password first. What follows in standard input answers the
  questions of the run.
  A password that is the name of an option is given as --password=--lock.
  A new password that is asked for has 3 bytes or more. How many a camera takes
  is its own matter.

Exit status:
  0  The run was finished or cancelled. So it is after a wrong password too, and
     whenever else the camera refused. A password was changed only where the
     line "Successfully changed the password!" stands. A run with a password or
     --lock ends by "Exiting program... Device is locked." or "Exiting
     program... Device is unlocked.", unless it ended earlier. That tells the
     state of the lock, and alone proves nothing about a password. A reset that
     was refused prints "Factory reset failed: ". The lists, --help and
     --version always end so.
  1  The run could not begin: there is no camera, or none with that serial
     number is accessible, or it could not be opened. Or something unexpected
     failed, which standard error tells.
  2  The command line or a password file is wrong. Nothing was done.

Environment:
  GENICAM_GENTL64_PATH  folders with producers (*.cti), separated by )";

const char *const helpEnd = R"(.
                        They are searched after the current folder.
)";
