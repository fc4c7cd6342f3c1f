// SPDX-License-Identifier: MIT
// See the header. What is left out here stands in known-differences.txt, where the oracle is asked too.
#include "DescriptionGenerator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <tuple>

namespace {

constexpr double exactWhole = 0x1p52;
constexpr double anything = 0x1p63;
constexpr double smallEnoughForFloats = 0x1p40;

std::string element(const std::string &tag, const std::string &text)
{
    return "<" + tag + ">" + text + "</" + tag + ">";
}

std::string escaped(const std::string &text)
{
    std::string result;
    for (const char byte : text)
        result += byte == '<' ? "&lt;" : byte == '>' ? "&gt;" : byte == '&' ? "&amp;" : std::string(1, byte);
    return result;
}

std::string decimal(double value)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.17g", value);
    return text.data();
}

std::string endianess(bool isBigEndian)
{
    return element("Endianess", isBigEndian ? "BigEndian" : "LittleEndian");
}

std::string sign(bool isSigned)
{
    return element("Sign", isSigned ? "Signed" : "Unsigned");
}

template <class Value>
std::vector<std::uint8_t> bytesOf(Value value, bool isBigEndian)
{
    std::vector<std::uint8_t> bytes(sizeof value);
    std::memcpy(bytes.data(), &value, sizeof value);
    if (isBigEndian)
        std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

} // namespace

Questionnaire DescriptionGenerator::generate(int count)
{
    using Maker = void (DescriptionGenerator::*)();
    using Self = DescriptionGenerator;
    constexpr std::array<std::pair<Maker, int>, 8> base{{{&Self::makeSmallNumber, 8},
                                                         {&Self::makeIntReg, 5},
                                                         {&Self::makeMaskedIntReg, 2},
                                                         {&Self::makeFloatReg, 3},
                                                         {&Self::makeStringReg, 2},
                                                         {&Self::makeInteger, 2},
                                                         {&Self::makeFloat, 2},
                                                         {&Self::makeSwitch, 8}}};
    constexpr std::array<Maker, 22> makers{
        &Self::makeIntReg,          &Self::makeMaskedIntReg,    &Self::makeStructReg,
        &Self::makeFloatReg,        &Self::makeStringReg,       &Self::makeRegister,
        &Self::makeInteger,         &Self::makeFloat,           &Self::makeIndexedInteger,
        &Self::makeIndexedFloat,    &Self::makeIntSwissKnife,   &Self::makeIntSwissKnife,
        &Self::makeFloatSwissKnife, &Self::makeFloatSwissKnife, &Self::makeIntConverter,
        &Self::makeFloatConverter,  &Self::makeLinearConverter, &Self::makeBoolean,
        &Self::makeEnumeration,     &Self::makeCommand,         &Self::makeString,
        &Self::makeConditioned};
    for (const auto &[maker, times] : base) {
        for (int time = 0; time < times; ++time)
            (this->*maker)();
    }
    for (int made = 0; made < count; ++made)
        (this->*random.pick(makers))();

    Questionnaire result;
    result.description = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                         "<RegisterDescription ModelName=\"Generated\" VendorName=\"Test\" "
                         "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" "
                         "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n<Port Name=\"Device\"/>\n" +
                         xml + "</RegisterDescription>\n";
    result.memory = memory;
    result.questions = reads;
    result.questions.insert(result.questions.end(), writes.begin(), writes.end());
    return result;
}

// What all makers use.

std::string DescriptionGenerator::newName(const std::string &stem)
{
    return stem + std::to_string(++nodeCount);
}

std::string DescriptionGenerator::add(const std::string &tag, const std::string &children)
{
    const std::string name = newName(tag);
    xml += "<" + tag + " Name=\"" + name + "\">" + children + "</" + tag + ">\n";
    return name;
}

void DescriptionGenerator::ask(const std::string &action, const std::string &kind, const std::string &node)
{
    reads.push_back({action, kind, node, ""});
}

void DescriptionGenerator::askWrite(const std::string &kind, const std::string &node,
                                    const std::string &value)
{
    writes.push_back({"set", kind, node, value});
}

void DescriptionGenerator::keep(Refs &pool, const Ref &ref, const std::string &mode)
{
    const bool isFloat = &pool == &floats;
    const std::string kind = isFloat ? "float" : "integer";
    ask("get", kind, ref.name);
    ask("mode", kind, ref.name);
    if (ref.hasRange) {
        for (const char *const bound : {"min", "max"})
            ask(bound, kind, ref.name);
        if (ref.increment > 1)
            ask("inc", kind, ref.name);
        if (ref.isWritable)
            askWrite(kind, ref.name, decimal(ref.high + 1));
    }
    if (ref.isWritable || mode == "WO")
        askWrite(kind, ref.name, numberIn(ref));
    if (mode != "WO")
        pool.push_back(ref);
}

std::string DescriptionGenerator::numberIn(const Ref &ref)
{
    if (ref.isWhole) {
        const auto low = static_cast<std::int64_t>(ref.low);
        const std::int64_t steps = (static_cast<std::int64_t>(ref.high) - low) / ref.increment;
        return std::to_string(low + ref.increment * random.between(0, steps));
    }
    return decimal(ref.low + (ref.high - ref.low) * static_cast<double>(random.below(4096)) / 4096);
}

/// Min and Max for a node that may be written, within what it could take without them.
std::string DescriptionGenerator::range(Ref &ref)
{
    if (!ref.isWritable || ref.high - ref.low < 100 || random.chance(40))
        return "";
    ref.hasRange = true;
    ref.high = ref.low + std::floor((ref.high - ref.low) / 2);
    std::string children = element("Max", decimal(ref.high));
    if (ref.isWhole && random.chance(30))
        children = element("pMax", constantNode(static_cast<std::int64_t>(ref.high)));
    const Ref &least = random.pick(smallNumbers);
    if (ref.low <= 0 && ref.high > 7 && random.chance(30)) {
        ref.low = static_cast<double>(least.known);
        return element("pMin", least.name) + children;
    }
    return element("Min", decimal(ref.low)) + children;
}

std::uint64_t DescriptionGenerator::place(const std::vector<std::uint8_t> &bytes)
{
    const std::uint64_t address = nextAddress + random.below(4);
    for (std::size_t at = 0; at < bytes.size(); ++at)
        memory[address + at] = bytes[at];
    nextAddress = address + bytes.size();
    return address;
}

std::vector<std::uint8_t> DescriptionGenerator::randomBytes(std::size_t count)
{
    std::vector<std::uint8_t> bytes(count);
    for (std::uint8_t &byte : bytes)
        byte = static_cast<std::uint8_t>(random.bits() >> 56);
    return bytes;
}

std::string DescriptionGenerator::constantNode(std::int64_t value)
{
    return add("Integer", element("Value", std::to_string(value)));
}

/// The first of a pool can be read and written.
std::string DescriptionGenerator::randomMode(const Refs &pool)
{
    if (pool.empty())
        return "RW";
    constexpr std::array<const char *, 8> modes{"", "RO", "RO", "RW", "RW", "RW", "RW", "WO"};
    return random.pick(modes);
}

// Registers.

/// One summand of an address, taken from \p rest.
std::string DescriptionGenerator::addressPart(std::uint64_t &rest, std::size_t length)
{
    const auto take = [&rest](std::int64_t part) { rest -= static_cast<std::uint64_t>(part); };
    const Ref &index = random.pick(smallNumbers);
    const std::int64_t factor = random.between(1, 300);
    switch (random.below(6)) {
    case 0:
        take(index.known);
        return element("pAddress", index.name);
    case 1: {
        take(index.known * factor + 5);
        const std::string name = random.chance(50) ? newName("Inline") : "";
        if (!name.empty())
            ask("get", "integer", name);
        return "<IntSwissKnife" + (name.empty() ? "" : " Name=\"" + name + "\"") + "><pVariable Name=\"I\">" +
               index.name + "</pVariable><Formula>5+I*" + std::to_string(factor) +
               "</Formula></IntSwissKnife>";
    }
    case 2:
        take(index.known * factor);
        return "<pIndex Offset=\"" + std::to_string(factor) + "\">" + index.name + "</pIndex>";
    case 3: {
        const Ref &offset = random.pick(smallNumbers);
        take(index.known * offset.known);
        return "<pIndex pOffset=\"" + offset.name + "\">" + index.name + "</pIndex>";
    }
    case 4:
        take(index.known * static_cast<std::int64_t>(length));
        return element("pIndex", index.name);
    default:
        take(factor);
        return element("Address", std::to_string(factor));
    }
}

std::string DescriptionGenerator::registerAt(std::uint64_t address, std::size_t length,
                                             const std::string &mode)
{
    std::uint64_t rest = address;
    std::string parts;
    for (std::size_t count = random.below(3); count > 0; --count)
        parts += addressPart(rest, length);
    std::array<char, 24> constant{};
    std::snprintf(constant.data(), constant.size(), random.chance(70) ? "0x%llX" : "%llu",
                  static_cast<unsigned long long>(rest));
    std::string children = random.chance(10)
                               ? element("pAddress", constantNode(static_cast<std::int64_t>(rest)))
                               : element("Address", constant.data());
    children = random.chance(50) ? children + parts : parts + children;
    children += random.chance(20) ? element("pLength", constantNode(static_cast<std::int64_t>(length)))
                                  : element("Length", std::to_string(length));
    if (!mode.empty())
        children += element("AccessMode", mode);
    constexpr std::array<const char *, 4> cachings{"", "NoCache", "WriteThrough", "WriteAround"};
    if (const std::string caching = random.pick(cachings); !caching.empty())
        children += element("Cachable", caching);
    return children + element("pPort", "Device");
}

DescriptionGenerator::Field DescriptionGenerator::randomField(std::size_t length, bool isBigEndian)
{
    const int size = static_cast<int>(8 * length);
    const int width = static_cast<int>(1 + random.below(std::min<std::size_t>(8 * length, 60)));
    const int lowest = static_cast<int>(random.below(static_cast<std::size_t>(size - width + 1)));
    const auto numbered = [&](int bit) { return std::to_string(isBigEndian ? size - 1 - bit : bit); };
    if (width == 1 && random.chance(80))
        return {element("Bit", numbered(lowest)), 1};
    return {element("LSB", numbered(lowest)) + element("MSB", numbered(lowest + width - 1)), width};
}

DescriptionGenerator::Ref DescriptionGenerator::integerRef(const std::string &name, int width, bool isSigned,
                                                           const std::string &mode) const
{
    Ref ref{name, std::ldexp(1, width)};
    ref.isWritable = mode == "RW" || mode == "WO";
    const double half = std::ldexp(1, width - 1);
    ref.low = isSigned ? std::max(-half, -exactWhole) : 0;
    ref.high = std::min(isSigned ? half - 1 : 2 * half - 1, exactWhole);
    return ref;
}

void DescriptionGenerator::makeIntReg()
{
    constexpr std::array<std::size_t, 7> lengths{1, 2, 2, 3, 4, 4, 8};
    const std::size_t length = random.pick(lengths);
    const bool isSigned = random.chance(40);
    const std::string mode = randomMode(integers);
    std::string children = registerAt(place(randomBytes(length)), length, mode);
    if (isSigned || random.chance(50))
        children += sign(isSigned);
    if (random.chance(70))
        children += endianess(random.chance(50));
    Ref ref = integerRef(add("IntReg", children), static_cast<int>(8 * length), isSigned, mode);
    ref.hasRange = length < 8;
    keep(integers, ref, mode);
}

void DescriptionGenerator::makeMaskedIntReg()
{
    constexpr std::array<std::size_t, 5> lengths{1, 2, 3, 4, 8};
    const std::size_t length = random.pick(lengths);
    const bool isBigEndian = random.chance(50);
    const bool isSigned = random.chance(30);
    const Field field = randomField(length, isBigEndian);
    const std::string mode = field.width > 32 ? "RO" : randomMode(integers);
    const std::string name =
        add("MaskedIntReg", registerAt(place(randomBytes(length)), length, mode) + field.children +
                                sign(isSigned) + endianess(isBigEndian));
    keep(integers, integerRef(name, field.width, isSigned, mode), mode);
}

void DescriptionGenerator::makeStructReg()
{
    const bool isBigEndian = random.chance(50);
    std::string children = registerAt(place(randomBytes(4)), 4, "RW") + endianess(isBigEndian);
    for (std::size_t count = 1 + random.below(4); count > 0; --count) {
        const Field field = randomField(4, isBigEndian);
        const bool isSigned = random.chance(30);
        const std::string mode = random.chance(50) ? "RO" : "RW";
        const std::string name = newName("StructEntry");
        children += "<StructEntry Name=\"" + name + "\">" + element("AccessMode", mode) + field.children +
                    sign(isSigned) + "</StructEntry>";
        keep(integers, integerRef(name, field.width, isSigned, mode));
    }
    xml += "<StructReg Comment=\"fields\">" + children + "</StructReg>\n";
}

void DescriptionGenerator::makeFloatReg()
{
    constexpr std::array<double, 8> odd{std::numeric_limits<double>::infinity(),
                                        -std::numeric_limits<double>::infinity(),
                                        std::numeric_limits<double>::quiet_NaN(),
                                        -0.0,
                                        1e-300,
                                        5e-324,
                                        1e-42,
                                        1.7e308};
    const bool isOdd = !floats.empty() && random.chance(20);
    const bool isDouble = random.chance(50);
    const bool isBigEndian = random.chance(50);
    const double value =
        isOdd ? random.pick(odd) : static_cast<double>(random.between(-1000000, 1000000)) / 64;
    const std::uint64_t address =
        place(isDouble ? bytesOf(value, isBigEndian) : bytesOf(static_cast<float>(value), isBigEndian));
    const std::string mode = randomMode(floats);
    Ref ref{add("FloatReg", registerAt(address, isDouble ? 8 : 4, mode) + endianess(isBigEndian)), 20000,
            false};
    ref.isWritable = mode == "RW" || mode == "WO";
    ref.low = -1000;
    ref.high = 1000;
    keep(floats, ref, mode);
    if (isOdd && mode != "WO")
        floats.pop_back();
}

void DescriptionGenerator::makeStringReg()
{
    std::vector<std::uint8_t> bytes(1 + random.below(24));
    for (std::uint8_t &byte : bytes)
        byte = static_cast<std::uint8_t>(random.chance(4) ? 0 : random.between(' ', '~'));
    const std::string mode = random.chance(60) ? "RW" : randomMode(strings);
    Ref ref{add("StringReg", registerAt(place(bytes), bytes.size(), mode))};
    ref.isWritable = mode == "RW" || mode == "WO";
    ref.high = static_cast<double>(bytes.size());
    ask("get", "string", ref.name);
    ask("mode", "string", ref.name);
    if (ref.isWritable) {
        askWrite("string", ref.name, std::string(1 + random.below(bytes.size()), 'w'));
        askWrite("string", ref.name, std::string(bytes.size() + 1, 'w'));
    }
    if (mode != "WO")
        strings.push_back(ref);
}

void DescriptionGenerator::makeRegister()
{
    const std::size_t length = 1 + random.below(40);
    const std::string name = add("Register", registerAt(place(randomBytes(length)), length, "RW"));
    ask("get", "register", name);
    ask("mode", "register", name);
}

// Nodes that other nodes build on: small numbers for addresses, indexes and lengths, and switches for conditions.

std::string DescriptionGenerator::byteRegister(std::uint8_t content, const std::string &mode)
{
    std::string children = smallNumbers.empty() ? element("Address", std::to_string(place({content}))) +
                                                      element("Length", "1") + element("AccessMode", mode) +
                                                      element("pPort", "Device")
                                                : registerAt(place({content}), 1, mode);
    return add("IntReg", children);
}

void DescriptionGenerator::makeSmallNumber()
{
    const std::int64_t value = random.between(0, 7);
    const std::string text = std::to_string(value);
    const std::string source = byteRegister(static_cast<std::uint8_t>(value));
    Ref ref{source, 8};
    ref.known = value;
    switch (random.below(6)) {
    case 0:
        ref.name = constantNode(value);
        break;
    case 1:
        ref.name = add("Integer", element("pValue", source));
        break;
    case 2:
        ref.name = add("IntSwissKnife",
                       "<pVariable Name=\"VAR\">" + source + "</pVariable><Formula>VAR*2-VAR</Formula>");
        break;
    case 3:
        ref.name = add("IntConverter", "<FormulaTo>FROM/4</FormulaTo><FormulaFrom>TO*4/4</FormulaFrom>" +
                                           element("pValue", source));
        break;
    case 4:
        ref.name =
            add("MaskedIntReg",
                element("Address", std::to_string(place({static_cast<std::uint8_t>(value << 3 | 0x81)}))) +
                    "<Length>1</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>"
                    "<LSB>3</LSB><MSB>5</MSB>");
        break;
    default:
        break;
    }
    ask("get", "integer", ref.name);
    ask("mode", "integer", ref.name);
    smallNumbers.push_back(ref);
}

void DescriptionGenerator::makeSwitch()
{
    const bool isOn = random.chance(60);
    const std::string value = isOn ? "1" : "0";
    const std::string source = byteRegister(isOn ? 1 : 0);
    const std::string two = byteRegister(isOn ? 2 : 0);
    std::string name = source;
    std::string kind = "integer";
    switch (random.below(9)) {
    case 0:
        name = constantNode(isOn ? 1 : 0);
        break;
    case 1:
        name = add("Integer", element("pValue", two));
        break;
    case 2:
        kind = "boolean";
        name = add("Boolean", element("pValue", two) + "<OnValue>2</OnValue><OffValue>0</OffValue>");
        break;
    case 3:
        kind = "enumeration";
        name =
            add("Enumeration", "<EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry><EnumEntry Name=\"On\">"
                               "<Value>2</Value></EnumEntry>" +
                                   element("pValue", two));
        break;
    case 4:
        name =
            add("IntSwissKnife", "<pVariable Name=\"X\">" + two + "</pVariable><Formula>X &gt; 1</Formula>");
        break;
    case 5:
        name = add("IntConverter",
                   "<FormulaTo>FROM</FormulaTo><FormulaFrom>TO/2</FormulaFrom>" + element("pValue", two));
        break;
    case 6:
        kind = "float";
        name = add("SwissKnife", "<pVariable Name=\"X\">" + two + "</pVariable><Formula>X*2</Formula>");
        break;
    case 7:
        kind = "float";
        name = add("Float", element("Value", value));
        break;
    default:
        break;
    }
    ask("get", kind, name);
    ask("mode", kind, name);
    switches.push_back({name});
}

// Nodes over other nodes.

void DescriptionGenerator::makeValueNode(bool isInteger)
{
    Refs &pool = isInteger || random.chance(20) ? integers : floats;
    Ref ref{"", 1e6, isInteger};
    ref.isWritable = true;
    ref.low = -1000;
    ref.high = 1e6;
    std::string children;
    if (random.chance(30))
        children =
            element("Value", isInteger ? std::to_string(random.between(-1000, 1000000)) : numberIn(ref));
    else {
        ref = random.pick(pool);
        ref.hasRange = false;
        children = element("pValue", ref.name);
    }
    children += range(ref);
    if (ref.hasRange && isInteger && random.chance(30)) {
        ref.increment = random.between(2, 9);
        children += element("Inc", std::to_string(ref.increment));
    }
    ref.name = add(isInteger ? "Integer" : "Float", children);
    keep(isInteger ? integers : floats, ref);
}

void DescriptionGenerator::makeIndexed(bool isInteger)
{
    Refs &pool = isInteger ? integers : floats;
    Ref ref{"", 1e6, isInteger};
    ref.low = -1000;
    ref.high = 1e6;
    const auto value = [&](const std::string &tag, const std::string &attribute) {
        const Ref &target = random.pick(pool);
        if (!target.isWritable || random.chance(50)) // the oracle does not look at the modes of the targets
            return "<" + tag + attribute + ">" + numberIn(ref) + "</" + tag + ">";
        ref.bound = std::max(ref.bound, target.bound);
        return "<p" + tag + attribute + ">" + target.name + "</p" + tag + ">";
    };
    std::string children = element("pIndex", random.pick(smallNumbers).name);
    for (int index = 0; index < 8; ++index) {
        if (random.chance(50))
            children += value("ValueIndexed", " Index=\"" + std::to_string(index) + "\"");
    }
    children += value("ValueDefault", "");
    ref.name = add(isInteger ? "Integer" : "Float", children);
    keep(pool, ref);
}

DescriptionGenerator::Symbols DescriptionGenerator::symbols(Arithmetic arithmetic)
{
    const bool isInteger = arithmetic != Arithmetic::Float;
    constexpr std::array<const char *, 10> names{"A",    "B",   "AB",    "X1",  "E1",
                                                 "SINE", "PIX", "FROMA", "TOP", "x"};
    Symbols result;
    for (std::size_t place = random.below(3); place < names.size(); place += 1 + random.below(5)) {
        const bool takesInteger = isInteger || random.chance(40);
        const Ref &ref = random.pick(takesInteger ? integers : floats);
        if (arithmetic != Arithmetic::Integer && ref.bound > smallEnoughForFloats)
            continue;
        const std::string name = names[place] + std::string{random.chance(10) ? ".Value" : ""};
        result.elements += "<pVariable Name=\"" + name + "\">" + ref.name + "</pVariable>";
        result.leaves.push_back({name, ref.bound, ref.isWhole});
    }
    result.areVariables = random.chance(50);
    if (result.areVariables)
        return result;
    if (random.chance(70)) {
        const std::string value = isInteger ? std::to_string(random.below(100000)) : "0.125";
        result.elements += "<Constant Name=\"CONST\">" + value + "</Constant>";
        result.leaves.push_back({"CONST", 1e5, isInteger});
    }
    if (random.chance(70)) {
        const Term term = FormulaGenerator{random, arithmetic, result.leaves, false}.formula(2);
        result.elements += "<Expression Name=\"EXPR\">" + escaped(term.text) + "</Expression>";
        result.leaves.push_back({"EXPR", term.bound, term.isWhole});
    }
    return result;
}

void DescriptionGenerator::makeSwissKnife(bool isInteger)
{
    const Arithmetic arithmetic = isInteger ? Arithmetic::Integer : Arithmetic::Float;
    const Symbols known = symbols(arithmetic);
    const Term formula = FormulaGenerator{random, arithmetic, known.leaves, known.areVariables}.formula(4);
    const std::string name = add(isInteger ? "IntSwissKnife" : "SwissKnife",
                                 known.elements + element("Formula", escaped(formula.text)));
    keep(isInteger ? integers : floats, {name, isInteger ? anything : formula.bound, formula.isWhole});
}

/// With any formula to read by.
void DescriptionGenerator::makeConverter(bool isInteger)
{
    const Arithmetic arithmetic = isInteger ? Arithmetic::ExactInteger : Arithmetic::Float;
    const Ref &inner = random.pick(isInteger || random.chance(30) ? integers : floats);
    if (inner.bound > smallEnoughForFloats)
        return;
    Symbols known = symbols(arithmetic);
    known.leaves.push_back({"TO", inner.bound, inner.isWhole});
    const Term formula = FormulaGenerator{random, arithmetic, known.leaves, known.areVariables}.formula(3);
    const std::string name =
        add(isInteger ? "IntConverter" : "Converter", known.elements + element("FormulaTo", "FROM") +
                                                          element("FormulaFrom", escaped(formula.text)) +
                                                          element("pValue", inner.name));
    keep(isInteger ? integers : floats, {name, formula.bound, formula.isWhole});
}

/// With formulas that undo each other, to be written too.
void DescriptionGenerator::makeLinearConverter()
{
    const bool isInteger = random.chance(50);
    Ref ref = random.pick(isInteger || random.chance(30) ? integers : floats);
    if (!ref.isWritable || ref.bound > smallEnoughForFloats)
        return;
    const double factor = !isInteger && ref.isWhole ? 1 : static_cast<double>(1 << random.below(5));
    const auto offset = static_cast<double>(random.below(100));
    const bool isFalling = random.chance(30);
    const std::string a = decimal(factor);
    const std::string b = decimal(offset);
    const std::string from = isFalling ? b + "-TO*" + a : "TO*" + a + "+" + b;
    const std::string to = isFalling ? "(" + b + "-FROM)/" + a : "(FROM-" + b + ")/" + a;
    const std::array<const char *, 4> slopes{"", "Automatic", "Varying", isFalling ? "Decreasing" : "Increasing"};
    const std::string slope = random.pick(slopes);
    ref.name = add(isInteger ? "IntConverter" : "Converter",
                   element("FormulaTo", to) + element("FormulaFrom", from) + element("pValue", ref.name) +
                       (slope.empty() ? "" : element("Slope", slope)) + element("IsLinear", "Yes"));
    const double sign = isFalling ? -factor : factor;
    ref.bound = ref.bound * factor + offset;
    std::tie(ref.low, ref.high) = std::minmax({ref.low * sign + offset, ref.high * sign + offset});
    ref.increment = 1;
    ref.hasRange = ref.hasRange && slope != "Varying"; // then ours has no limits
    keep(isInteger ? integers : floats, ref);
}

void DescriptionGenerator::makeBoolean()
{
    std::string children;
    if (random.chance(20))
        children = element("Value", random.chance(50) ? "1" : "0");
    else if (random.chance(50))
        children = element("pValue", byteRegister(static_cast<std::uint8_t>(random.below(3))));
    else
        children = element("pValue", byteRegister(static_cast<std::uint8_t>(random.below(8)))) +
                   "<OnValue>6</OnValue>" + (random.chance(50) ? "<OffValue>0x3</OffValue>" : "");
    const std::string name = add("Boolean", children);
    ask("get", "boolean", name);
    ask("mode", "boolean", name);
    askWrite("boolean", name, "true");
    askWrite("boolean", name, "false");
    switches.push_back({name});
}

void DescriptionGenerator::makeEnumeration()
{
    const std::size_t count = 1 + random.below(6);
    std::vector<std::int64_t> values;
    std::string children;
    for (std::size_t entry = 0; entry < count; ++entry) {
        values.push_back(static_cast<std::int64_t>(entry) * 37 + random.between(0, 36));
        children += "<EnumEntry Name=\"Entry" + std::to_string(entry) +
                    "\"><DisplayName>Entry</DisplayName>" + element("Value", std::to_string(values.back())) +
                    (random.chance(20) ? "<NumericValue>1.5</NumericValue>" : "") + "</EnumEntry>";
    }
    const std::int64_t value = random.pick(values);
    const bool isConstant = random.chance(20);
    const std::string mode = random.chance(30) ? "RO" : "RW";
    children += isConstant ? element("Value", std::to_string(value))
                           : element("pValue", byteRegister(static_cast<std::uint8_t>(value), mode));
    const std::string name = add("Enumeration", children);
    ask("get", "enumeration", name);
    ask("mode", "enumeration", name);
    askWrite("enumeration", name, "Entry" + std::to_string(random.below(count)));
    askWrite("enumeration", name, "NoEntry");
    switches.push_back({name});
    if (random.chance(50)) { // as the target of an integer
        const std::string integer = add("Integer", element("pValue", name));
        ask("get", "integer", integer);
        ask("mode", "integer", integer);
        integers.push_back({name, 256});
    }
}

void DescriptionGenerator::makeCommand()
{
    const Ref &target = random.pick(integers);
    if (!target.isWritable || target.low > 0 || target.high < 8)
        return;
    const std::string value = random.chance(50) ? element("CommandValue", std::to_string(random.below(8)))
                                                : element("pCommandValue", random.pick(smallNumbers).name);
    const std::string name = add("Command", element("pValue", target.name) + value);
    ask("mode", "command", name);
    askWrite("command", name, "");
}

void DescriptionGenerator::makeString()
{
    const Ref &target = random.pick(strings);
    const bool isConstant = random.chance(30);
    const std::string name = add("String", isConstant ? element("Value", "text " + std::to_string(nodeCount))
                                                      : element("pValue", target.name));
    ask("get", "string", name);
    ask("mode", "string", name);
    if (isConstant || target.isWritable)
        askWrite("string", name, "v");
}

std::string DescriptionGenerator::conditions(bool canBeWritten)
{
    std::string children;
    for (const char *const condition : {"pIsImplemented", "pIsAvailable", "pIsLocked"}) {
        if (random.chance(40))
            children += element(condition, random.pick(switches).name);
    }
    constexpr std::array<const char *, 3> imposed{"RO", "RW", "WO"};
    if (canBeWritten && random.chance(30))
        children += element("ImposedAccessMode", random.pick(imposed));
    return children;
}

/// Nobody refers to these: the oracle looks at the conditions of a node, but not at those behind it.
void DescriptionGenerator::makeConditioned()
{
    const bool isFloat = random.chance(30);
    const std::string kind = isFloat ? "float" : "integer";
    const Ref &inner = random.pick(isFloat ? floats : integers);
    std::string name;
    std::string value = inner.isWritable ? numberIn(inner) : "";
    if (!isFloat && random.chance(30)) {
        value = "1";
        name = add("IntReg", registerAt(place(randomBytes(2)), 2, "RW") + conditions(true));
    } else if (random.chance(20)) {
        value = "1"; // refused
        name = add(isFloat ? "SwissKnife" : "IntSwissKnife", "<pVariable Name=\"V\">" + inner.name +
                                                                 "</pVariable><Formula>V</Formula>" +
                                                                 conditions(false));
    } else
        name =
            add(isFloat ? "Float" : "Integer", element("pValue", inner.name) + conditions(inner.isWritable));
    ask("get", kind, name);
    ask("mode", kind, name);
    if (!value.empty())
        askWrite(kind, name, value);
}
