// SPDX-License-Identifier: MIT
// See the header.
#include "GeneratedCamera.h"

namespace {

constexpr std::size_t featuresPerCategory = 12;

constexpr const char *head =
    R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Generated" VendorName="Test" ToolTip="" StandardNameSpace="None"
    SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0"
    SubMinorVersion="0" ProductGuid="1" VersionGuid="1" xmlns="http://www.genicam.org/GenApi/Version_1_1">
  <Port Name="Device" NameSpace="Standard"><ToolTip>The registers of the device</ToolTip></Port>
)";

/// # stands for the number of the feature, @ for the address of its registers.
constexpr const char *feature = R"(
  <Integer Name="Feature#" NameSpace="Custom">
    <ToolTip>Sets how many lines the sensor skips in front of region #</ToolTip>
    <Description>Lines that the sensor skips in front of region #, counted on the sensor itself.</Description>
    <DisplayName>Region # Offset</DisplayName>
    <Visibility>Expert</Visibility>
    <pIsLocked>Lock#</pIsLocked>
    <Streamable>Yes</Streamable>
    <pValue>Knife#</pValue>
    <Min>0</Min>
    <pMax>Limit#</pMax>
    <Inc>1</Inc>
    <Unit>px</Unit>
    <Representation>Linear</Representation>
  </Integer>
  <IntSwissKnife Name="Knife#">
    <pVariable Name="REGISTER">Register#</pVariable>
    <Constant Name="STEP">2</Constant>
    <Formula>((REGISTER &amp; 0xFFFF) * STEP) + ((REGISTER &gt;&gt; 16) &amp; 1)</Formula>
  </IntSwissKnife>
  <IntReg Name="Register#">
    <Address>0x@0</Address>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <Cachable>WriteThrough</Cachable>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
  <IntReg Name="Limit#">
    <Address>0x@4</Address>
    <Length>4</Length>
    <AccessMode>RO</AccessMode>
    <pPort>Device</pPort>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
  <MaskedIntReg Name="Lock#">
    <Address>0x@8</Address>
    <Length>4</Length>
    <AccessMode>RO</AccessMode>
    <pPort>Device</pPort>
    <Bit>31</Bit>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </MaskedIntReg>
  <Enumeration Name="Mode#" NameSpace="Custom">
    <ToolTip>Selects when region # is exposed</ToolTip>
    <DisplayName>Region # Mode</DisplayName>
    <Visibility>Beginner</Visibility>
    <EnumEntry Name="Off"><ToolTip>Never</ToolTip><DisplayName>Off</DisplayName><Value>0</Value></EnumEntry>
    <EnumEntry Name="Timed"><ToolTip>For a set time</ToolTip><Value>1</Value></EnumEntry>
    <EnumEntry Name="Trigger"><ToolTip>While triggered</ToolTip><Value>2</Value></EnumEntry>
    <EnumEntry Name="Once"><pIsAvailable>Lock#</pIsAvailable><Value>3</Value></EnumEntry>
    <pValue>ModeRegister#</pValue>
  </Enumeration>
  <MaskedIntReg Name="ModeRegister#">
    <Address>0x@8</Address>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <LSB>1</LSB>
    <MSB>0</MSB>
    <Endianess>BigEndian</Endianess>
  </MaskedIntReg>
  <Float Name="Gain#" NameSpace="Custom">
    <ToolTip>Sets the gain of region #</ToolTip>
    <DisplayName>Region # Gain</DisplayName>
    <pValue>GainConverter#</pValue>
    <Min>0.0</Min>
    <Max>48.0</Max>
    <Unit>dB</Unit>
    <DisplayPrecision>2</DisplayPrecision>
  </Float>
  <Converter Name="GainConverter#">
    <FormulaTo>FROM * 10</FormulaTo>
    <FormulaFrom>TO / 10</FormulaFrom>
    <pValue>Limit#</pValue>
    <Slope>Increasing</Slope>
  </Converter>
)";

std::string hexadecimal(std::size_t number)
{
    std::string digits;
    for (; number != 0 || digits.empty(); number /= 16)
        digits.insert(digits.begin(), "0123456789ABCDEF"[number % 16]);
    return digits;
}

std::string featureText(std::size_t number)
{
    std::string text;
    for (const char *place = feature; *place != '\0'; ++place) {
        if (*place == '#')
            text += std::to_string(number);
        else if (*place == '@')
            text += hexadecimal(0x1000 + number);
        else
            text += *place;
    }
    return text;
}

std::string categoryText(std::size_t firstFeature, std::size_t lastFeature)
{
    std::string text = "  <Category Name=\"Region" + std::to_string(firstFeature) + "\">\n";
    for (std::size_t number = firstFeature; number <= lastFeature; ++number) {
        for (const char *const name : {"Feature", "Mode", "Gain"})
            text += "    <pFeature>" + (name + std::to_string(number)) + "</pFeature>\n";
    }
    return text + "  </Category>\n";
}

} // namespace

GeneratedCamera::GeneratedCamera(std::size_t size) : description{head}
{
    const std::string end = "</RegisterDescription>\n";
    for (std::size_t inCategory = 0; description.size() + end.size() < size;) {
        description += featureText(featureCount++);
        if (++inCategory == featuresPerCategory || description.size() + end.size() >= size) {
            description += categoryText(featureCount - inCategory, featureCount - 1);
            inCategory = 0;
        }
    }
    description += end;
}

std::string GeneratedCamera::featureName(std::size_t number)
{
    return "Feature" + std::to_string(number);
}

void readRegisters(std::uint64_t address, void *buffer, std::size_t length)
{
    auto *const bytes = static_cast<std::uint8_t *>(buffer);
    for (std::size_t place = 0; place < length; ++place)
        bytes[place] = static_cast<std::uint8_t>((address + place) * 37 >> 3);
}
