// SPDX-License-Identifier: MIT
#include "Description.h"

#include "Registers.h"
#include "Zip.h"

#include <cctype>
#include <sstream>

namespace simulator {

namespace {

std::string hex(std::uint64_t value)
{
    std::ostringstream text;
    text << std::uppercase << std::hex << value;
    return text.str();
}

/// \p text as the value of an attribute.
std::string escaped(std::string_view text)
{
    std::string result;
    for (const char character : text) {
        if (character == '&')
            result += "&amp;";
        else if (character == '<')
            result += "&lt;";
        else if (character == '"')
            result += "&quot;";
        else
            result += character;
    }
    return result;
}

/// Letters, digits, '-' and '_' of a name; all else becomes '_'.
std::string identifierOf(std::string_view name)
{
    std::string result;
    for (const char character : name) {
        const bool isKept = std::isalnum(static_cast<unsigned char>(character)) || character == '-';
        result += isKept ? character : '_';
    }
    return result;
}

std::string category(std::string_view name, std::initializer_list<std::string_view> features)
{
    std::string text = "    <Category Name=\"" + std::string(name) + "\" NameSpace=\"Standard\">\n";
    for (const std::string_view feature : features)
        text.append("      <pFeature>").append(feature).append("</pFeature>\n");
    return text + "    </Category>\n";
}

std::string registerChildren(const Register &place, std::string_view access)
{
    return "      <Address>0x" + hex(place.address) + "</Address>\n      <Length>" +
           std::to_string(place.size) + "</Length>\n      <AccessMode>" + std::string(access) +
           "</AccessMode>\n      <pPort>Device</pPort>\n";
}

std::string integerRegister(std::string_view name, const Register &place, std::string_view access,
                            std::string_view endianess)
{
    return "    <IntReg Name=\"" + std::string(name) + "\">\n" + registerChildren(place, access) +
           "      <Cachable>NoCache</Cachable>\n      <Sign>Unsigned</Sign>\n      <Endianess>" +
           std::string(endianess) + "</Endianess>\n    </IntReg>\n";
}

std::string textRegister(std::string_view name, const Register &place)
{
    return "    <StringReg Name=\"" + std::string(name) + "\" NameSpace=\"Standard\">\n" +
           registerChildren(place, "RO") + "    </StringReg>\n";
}

std::string deviceControl(std::string_view endianess)
{
    std::string text = "  <Group Comment=\"DeviceControl\">\n";
    text += category("DeviceControl",
                     {"DeviceVendorName", "DeviceModelName", "DeviceFirmwareVersion", "DeviceSerialNumber",
                      "DeviceUserID", "TimestampLatch", "TimestampLatchValue"});
    text += textRegister("DeviceVendorName", RegVendorName);
    text += textRegister("DeviceModelName", RegModelName);
    text += textRegister("DeviceSerialNumber", RegSerialNumber);
    text += textRegister("DeviceUserID", RegUserName);
    text += R"(    <String Name="DeviceFirmwareVersion" NameSpace="Standard">
      <pValue>DeviceVersionReg</pValue>
    </String>
)";
    text += textRegister("DeviceVersionReg", RegDeviceVersion);
    text += R"(    <Command Name="TimestampLatch" NameSpace="Standard">
      <pValue>TimestampLatchReg</pValue>
      <CommandValue>1</CommandValue>
    </Command>
    <Integer Name="TimestampLatchValue" NameSpace="Standard">
      <pValue>TimestampLatchValueReg</pValue>
      <Unit>ns</Unit>
    </Integer>
)";
    text += integerRegister("TimestampLatchReg", RegTimestampLatch, "RW", endianess);
    text += integerRegister("TimestampLatchValueReg", RegTimestampValue, "RO", endianess);
    return text + "  </Group>\n";
}

std::string imageFormatControl(std::string_view endianess)
{
    return "  <Group Comment=\"ImageFormatControl\">\n" + category("ImageFormatControl", {"ReverseX"}) +
           R"(    <Boolean Name="ReverseX" NameSpace="Standard">
      <pValue>ReverseXReg</pValue>
      <OnValue>1</OnValue>
      <OffValue>0</OffValue>
    </Boolean>
)" + integerRegister("ReverseXReg", RegReverseX, "RW", endianess) +
           "  </Group>\n";
}

/// The addresses on the network, always in network byte order.
std::string transportLayerControl()
{
    const Register macHigh{RegMacAddress.address, 4};
    const Register macLow{RegMacAddress.address + 4, 4};
    return "  <Group Comment=\"TransportLayerControl\">\n" +
           category("TransportLayerControl", {"GevMACAddress", "GevCurrentIPAddress"}) +
           R"(    <Integer Name="GevMACAddress" NameSpace="Standard">
      <pValue>GevMACAddressFormula</pValue>
      <Representation>MACAddress</Representation>
    </Integer>
    <IntSwissKnife Name="GevMACAddressFormula">
      <pVariable Name="HIGH">GevMACAddressHighReg</pVariable>
      <pVariable Name="LOW">GevMACAddressLowReg</pVariable>
      <Formula>(HIGH &lt;&lt; 32) | LOW</Formula>
    </IntSwissKnife>
    <MaskedIntReg Name="GevMACAddressHighReg">
)" + registerChildren(macHigh, "RO") +
           R"(      <LSB>31</LSB>
      <MSB>16</MSB>
      <Sign>Unsigned</Sign>
      <Endianess>BigEndian</Endianess>
    </MaskedIntReg>
)" + integerRegister("GevMACAddressLowReg", macLow, "RO", "BigEndian") +
           R"(    <Integer Name="GevCurrentIPAddress" NameSpace="Standard">
      <pValue>GevCurrentIPAddressReg</pValue>
      <Representation>IPV4Address</Representation>
    </Integer>
)" + integerRegister("GevCurrentIPAddressReg", RegCurrentIp, "RO", "BigEndian") +
           "  </Group>\n";
}

std::string builtInDescription(const CameraSettings &settings)
{
    const bool isGev = settings.type == "GEV";
    const std::string endianess = isGev ? "BigEndian" : "LittleEndian";
    std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<RegisterDescription ModelName=\"" +
                       escaped(settings.model) + "\" VendorName=\"" + escaped(settings.vendor) +
                       "\" ToolTip=\"Simulated camera\" StandardNameSpace=\"" + (isGev ? "GEV" : "None") +
                       R"("
    SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0"
    MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
    ProductGuid="6C0F7A0E-3B1D-4E52-9C53-0B6F3E1D7A11" VersionGuid="0D9A4C36-58B0-4A35-8E7E-2F1B6C4D9E22"
    xmlns="http://www.genicam.org/GenApi/Version_1_1">
  <Group Comment="Root">
)";
    text += isGev ? category("Root", {"DeviceControl", "ImageFormatControl", "TransportLayerControl"})
                  : category("Root", {"DeviceControl", "ImageFormatControl"});
    text += "  </Group>\n" + deviceControl(endianess) + imageFormatControl(endianess);
    if (isGev)
        text += transportLayerControl();
    return text + "  <Port Name=\"Device\" NameSpace=\"Standard\"/>\n</RegisterDescription>\n";
}

} // namespace

Description describeCamera(const CameraSettings &settings)
{
    const std::string name = identifierOf(settings.model);
    const std::string content = settings.xml ? *settings.xml : builtInDescription(settings);
    if (settings.isZipped)
        return {name + ".zip", zipOf(name + ".xml", content)};
    return {name + ".xml", content};
}

std::string urlOf(const Description &description)
{
    return "local:///" + description.fileName + ';' + hex(descriptionAddress) + ';' +
           hex(description.content.size()) + "?SchemaVersion=1.1.0";
}

} // namespace simulator
