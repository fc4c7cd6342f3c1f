// SPDX-License-Identifier: MIT
// See the header. What is left out here stands in known-differences.txt, where the oracle is asked too. No statement
// draws two random numbers in an order that is the compiler's choice.
#include "DescriptionGenerator.h"

#include "FormulaGenerator.h"
#include "Random.h"

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

/// A node that others can refer to. It is readable in any case.
struct Ref
{
    std::string name;
    double bound = 0; ///< see Term
    bool isWhole = true;
    bool isWritable = false;
    double low = 0; ///< from here to high it may be written, in steps of increment
    double high = 0;
    std::int64_t increment = 1;
    bool hasRange = false;  ///< it has a Min and a Max that both sides see
    std::int64_t known = 0; ///< the value of a small number
};
using Refs = std::vector<Ref>;

/// A kind of node over a byte register, whose name replaces each "@", and its content each "#".
struct Pattern
{
    const char *kind;
    const char *tag;
    const char *children;
};

constexpr std::array<Pattern, 6> smallNumberPatterns{{
    {"integer", "Integer", "<Value>#</Value>"},
    {"integer", "Integer", "<pValue>@</pValue>"},
    {"integer", "Integer",
     "<pIndex>@</pIndex><ValueIndexed Index=\"99\">1</ValueIndexed><pValueDefault>@</pValueDefault>"},
    {"integer", "IntSwissKnife", "<pVariable Name=\"VAR\">@</pVariable><Formula>VAR*2-VAR</Formula>"},
    {"integer", "IntConverter",
     "<FormulaTo>FROM</FormulaTo><FormulaFrom>TO*4/4</FormulaFrom><pValue>@</pValue>"},
    {"integer", "IntConverter",
     "<FormulaTo>FROM</FormulaTo><FormulaFrom>(7-TO)^7</FormulaFrom><pValue>@</pValue>"},
}};

/// Over a byte that is 0 or 2.
constexpr std::array<Pattern, 8> switchPatterns{{
    {"integer", "Integer", "<pValue>@</pValue>"},
    {"boolean", "Boolean", "<pValue>@</pValue><OnValue>2</OnValue>"},
    {"enumeration", "Enumeration",
     "<EnumEntry Name=\"Off\"><Value>0</Value></EnumEntry><EnumEntry Name=\"On\"><Value>2</Value></EnumEntry>"
     "<pValue>@</pValue>"},
    {"integer", "IntSwissKnife", "<pVariable Name=\"X\">@</pVariable><Formula>X &gt; 1</Formula>"},
    {"integer", "IntConverter",
     "<FormulaTo>FROM</FormulaTo><FormulaFrom>TO/2</FormulaFrom><pValue>@</pValue>"},
    {"float", "SwissKnife", "<pVariable Name=\"X\">@</pVariable><Formula>X*2</Formula>"},
    {"float", "Converter", "<FormulaTo>FROM</FormulaTo><FormulaFrom>TO*2</FormulaFrom><pValue>@</pValue>"},
    {"float", "Float", "<Value>#</Value>"},
}};

std::string element(const std::string &tag, const std::string &text)
{
    return "<" + tag + ">" + text + "</" + tag.substr(0, tag.find(' ')) + ">";
}

std::string named(const std::string &tag, const std::string &name)
{
    return tag + " Name=\"" + name + "\"";
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

template <class Value>
std::vector<std::uint8_t> bytesOf(Value value, bool isBigEndian)
{
    std::vector<std::uint8_t> bytes(sizeof value);
    std::memcpy(bytes.data(), &value, sizeof value);
    if (isBigEndian)
        std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

std::string endianess(bool isBigEndian)
{
    return element("Endianess", isBigEndian ? "BigEndian" : "LittleEndian");
}

bool isWritable(const std::string &mode)
{
    return mode == "RW" || mode == "WO";
}

class DescriptionGenerator
{
public:
    explicit DescriptionGenerator(std::uint64_t seed)
        : random{seed}, nextAddress{random.chance(50) ? 0x10000U : 0x123456780000U}
    {}

    Questionnaire generate(int count)
    {
        using Self = DescriptionGenerator;
        using Maker = void (Self::*)(bool isInteger);
        constexpr std::array<Maker, 20> makers{
            &Self::makeIntReg,     &Self::makeIntReg,     &Self::makeStructReg,  &Self::makeFloatReg,
            &Self::makeString,     &Self::makeRegister,   &Self::makeBoolean,    &Self::makeEnumeration,
            &Self::makeCommand,    &Self::makeValueNode,  &Self::makeValueNode,  &Self::makeLinearConverter,
            &Self::makeIndexed,    &Self::makeConverter,  &Self::makeConverter,  &Self::makeSwissKnife,
            &Self::makeSwissKnife, &Self::makeSwissKnife, &Self::makeSwissKnife, &Self::makeConditioned};
        for (int base = 0; base < 8; ++base)
            makeSmallNumber();
        for (int base = 0; base < 6; ++base) {
            makeIntReg(true);
            makeFloatReg(false);
            makeString(true);
            makeSwitch();
        }
        for (int made = 0; made < count; ++made) {
            const Maker maker = random.pick(makers);
            (this->*maker)(random.chance(50));
        }
        reads.insert(reads.end(), writes.begin(), writes.end());
        return {"<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<RegisterDescription ModelName=\"Generated\" "
                "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n<Port Name=\"Device\"/>\n" +
                    xml + "</RegisterDescription>\n",
                memory, reads};
    }

private:
    struct Symbols
    {
        std::string elements; ///< pVariable, Constant and Expression
        std::vector<Term> leaves;
        bool areVariables = false; ///< all of them
    };

    // What all makers use.

    std::string newName(const std::string &stem) { return stem + std::to_string(++nodeCount); }

    std::string add(const std::string &tag, const std::string &children)
    {
        const std::string name = newName(tag);
        xml += element(named(tag, name), children) + "\n";
        return name;
    }

    void askValue(const std::string &kind, const std::string &node)
    {
        reads.push_back({"get", kind, node, ""});
        reads.push_back({"mode", kind, node, ""});
    }

    void askWrite(const std::string &kind, const std::string &node, const std::string &value)
    {
        writes.push_back({"set", kind, node, value});
    }

    /// Asks for all that the node has, and offers it to later nodes.
    void keep(Refs &pool, const Ref &ref, const std::string &mode = "RW")
    {
        const std::string kind = &pool == &floats ? "float" : "integer";
        askValue(kind, ref.name);
        if (ref.hasRange) {
            reads.push_back({"min", kind, ref.name, ""});
            reads.push_back({"max", kind, ref.name, ""});
            if (ref.increment > 1)
                reads.push_back({"inc", kind, ref.name, ""});
            if (ref.isWritable)
                askWrite(kind, ref.name, decimal(ref.high + 1));
        }
        if (ref.isWritable)
            askWrite(kind, ref.name, numberIn(ref));
        if (mode != "WO")
            pool.push_back(ref);
    }

    std::string constantNode(std::int64_t value)
    {
        return add("Integer", element("Value", std::to_string(value)));
    }

    std::string numberIn(const Ref &ref)
    {
        if (!ref.isWhole)
            return decimal(ref.low + (ref.high - ref.low) * static_cast<double>(random.below(4096)) / 4096);
        const auto low = static_cast<std::int64_t>(ref.low);
        const std::int64_t steps = (static_cast<std::int64_t>(ref.high) - low) / ref.increment;
        return std::to_string(low + ref.increment * random.between(0, steps));
    }

    /// Min and Max for a node that may be written, within what it could take without them.
    std::string range(Ref &ref)
    {
        if (!ref.isWritable || ref.high - ref.low < 100 || random.chance(40))
            return "";
        ref.hasRange = true;
        ref.high = ref.low + std::floor((ref.high - ref.low) / 2);
        std::string children = element("Max", decimal(ref.high));
        if (ref.isWhole && random.chance(30))
            children = element("pMax", constantNode(static_cast<std::int64_t>(ref.high)));
        const Ref &least = random.pick(smallNumbers);
        const bool isLinked = ref.low <= 0 && ref.high > 7 && random.chance(30);
        ref.low = isLinked ? static_cast<double>(least.known) : ref.low;
        return children + (isLinked ? element("pMin", least.name) : element("Min", decimal(ref.low)));
    }

    std::string conditions(bool canBeWritten)
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

    std::uint64_t place(const std::vector<std::uint8_t> &bytes)
    {
        const std::uint64_t address = nextAddress + random.below(4);
        for (std::size_t at = 0; at < bytes.size(); ++at)
            memory[address + at] = bytes[at];
        nextAddress = address + bytes.size();
        return address;
    }

    std::uint64_t placeRandom(std::size_t count)
    {
        std::vector<std::uint8_t> bytes(count);
        for (std::uint8_t &byte : bytes)
            byte = static_cast<std::uint8_t>(random.bits() >> 56);
        return place(bytes);
    }

    /// One summand of an address, taken from \p rest.
    std::string addressPart(std::uint64_t &rest, std::size_t length)
    {
        const Ref &index = random.pick(smallNumbers);
        const Ref &offset = random.pick(smallNumbers);
        const std::int64_t factor = random.between(1, 300);
        const std::string factorText = std::to_string(factor);
        const std::string formula =
            element("pVariable Name=\"I\"", index.name) + element("Formula", "5+I*" + factorText);
        const std::string inlineName = newName("Inline");
        const std::array<std::pair<std::int64_t, std::string>, 7> parts{{
            {factor, element("Address", factorText)},
            {index.known, element("pAddress", index.name)},
            {5 + index.known * factor, element("IntSwissKnife", formula)},
            {index.known * factor, element("pIndex Offset=\"" + factorText + "\"", index.name)},
            {index.known * offset.known, element("pIndex pOffset=\"" + offset.name + "\"", index.name)},
            {index.known * static_cast<std::int64_t>(length), element("pIndex", index.name)},
            {5 + index.known * factor, element(named("IntSwissKnife", inlineName), formula)},
        }};
        const auto &[value, text] = random.pick(parts);
        if (&text == &parts.back().second)
            askValue("integer", inlineName);
        rest -= static_cast<std::uint64_t>(value);
        return text;
    }

    std::string registerAt(std::uint64_t address, std::size_t length, const std::string &mode)
    {
        std::uint64_t rest = address;
        std::string children;
        for (std::size_t count = smallNumbers.empty() ? 0 : random.below(3); count > 0; --count)
            children += addressPart(rest, length);
        std::array<char, 24> constant{};
        std::snprintf(constant.data(), constant.size(), random.chance(70) ? "0x%llX" : "%llu",
                      static_cast<unsigned long long>(rest));
        const std::string first = random.chance(10)
                                      ? element("pAddress", constantNode(static_cast<std::int64_t>(rest)))
                                      : element("Address", constant.data());
        children = random.chance(50) ? first + children : children + first;
        children += random.chance(20) ? element("pLength", constantNode(static_cast<std::int64_t>(length)))
                                      : element("Length", std::to_string(length));
        constexpr std::array<const char *, 3> cachings{"NoCache", "WriteThrough", "WriteAround"};
        if (random.chance(70))
            children += element("Cachable", random.pick(cachings));
        return children + (mode.empty() ? "" : element("AccessMode", mode)) + element("pPort", "Device");
    }

    std::string byteRegister(std::int64_t content, const std::string &mode = "RW")
    {
        return add("IntReg", registerAt(place({static_cast<std::uint8_t>(content)}), 1, mode));
    }

    std::string addPattern(const Pattern &pattern, std::int64_t content)
    {
        const std::string source = byteRegister(content);
        std::string children;
        for (const char letter : std::string{pattern.children})
            children += letter == '@'   ? source
                        : letter == '#' ? std::to_string(content)
                                        : std::string(1, letter);
        const std::string name = add(pattern.tag, children);
        askValue(pattern.kind, name);
        return name;
    }

    std::string field(std::size_t length, bool isBigEndian, int &width)
    {
        const std::size_t size = 8 * length;
        const std::size_t count = 1 + random.below(std::min<std::size_t>(size, 60));
        const std::size_t lowest = random.below(size - count + 1);
        const auto numbered = [&](std::size_t bit) {
            return std::to_string(isBigEndian ? size - 1 - bit : bit);
        };
        width = static_cast<int>(count);
        return count == 1 ? element("Bit", numbered(lowest))
                          : element("LSB", numbered(lowest)) + element("MSB", numbered(lowest + count - 1));
    }

    Ref integerRef(const std::string &name, int width, bool isSigned, const std::string &mode) const
    {
        const double half = std::ldexp(1, width - 1);
        return {name,
                2 * half,
                true,
                isWritable(mode),
                isSigned ? std::max(-half, -exactWhole) : 0,
                std::min(isSigned ? half - 1 : 2 * half - 1, exactWhole)};
    }

    /// The first of a pool can be read and written.
    std::string randomMode(const Refs &pool)
    {
        constexpr std::array<const char *, 8> modes{"", "RO", "RO", "RW", "RW", "RW", "RW", "WO"};
        return pool.empty() ? "RW" : random.pick(modes);
    }

    void makeSmallNumber()
    {
        const std::int64_t value = random.between(0, 7);
        Ref ref{addPattern(random.pick(smallNumberPatterns), value), 8};
        ref.known = value;
        smallNumbers.push_back(ref);
    }

    void makeSwitch()
    {
        const Pattern &pattern = random.pick(switchPatterns);
        switches.push_back({addPattern(pattern, random.chance(60) ? 2 : 0)});
    }

    /// Wider fields can't be written: the oracle loses their limits.
    void makeIntReg(bool isPlain)
    {
        constexpr std::array<std::size_t, 7> lengths{1, 2, 2, 3, 4, 4, 8};
        const std::size_t length = random.pick(lengths);
        const bool isBigEndian = random.chance(50);
        const bool isSigned = random.chance(40);
        int width = static_cast<int>(8 * length);
        std::string children = isPlain ? "" : field(length, isBigEndian, width);
        const std::string mode = !isPlain && width > 32 ? "RO" : randomMode(integers);
        if (isSigned || random.chance(50))
            children += element("Sign", isSigned ? "Signed" : "Unsigned");
        if (isBigEndian || random.chance(50))
            children += endianess(isBigEndian);
        children = registerAt(placeRandom(length), length, mode) + children;
        Ref ref = integerRef(add(isPlain ? "IntReg" : "MaskedIntReg", children), width, isSigned, mode);
        ref.hasRange = width <= 32;
        keep(integers, ref, mode);
    }

    void makeStructReg(bool)
    {
        const bool isBigEndian = random.chance(50);
        std::string children = registerAt(placeRandom(4), 4, "RW") + endianess(isBigEndian);
        for (std::size_t count = 1 + random.below(4); count > 0; --count) {
            int width = 0;
            const bool isSigned = random.chance(30);
            const std::string bits =
                field(4, isBigEndian, width) + element("Sign", isSigned ? "Signed" : "Unsigned");
            const std::string mode = random.chance(50) ? "RO" : "RW";
            const std::string name = newName("StructEntry");
            children += element(named("StructEntry", name), element("AccessMode", mode) + bits);
            keep(integers, integerRef(name, width, isSigned, mode));
        }
        xml += element("StructReg Comment=\"fields\"", children) + "\n";
    }

    void makeFloatReg(bool)
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        constexpr std::array<double, 7> odd{infinity, -infinity, nan, -0.0, 5e-324, 1e-42, 1.7e308};
        const bool isOdd = !floats.empty() && random.chance(20);
        const bool isDouble = random.chance(50);
        const bool isBigEndian = random.chance(50);
        const double value =
            isOdd ? random.pick(odd) : static_cast<double>(random.between(-1000000, 1000000)) / 64;
        const std::uint64_t address =
            place(isDouble ? bytesOf(value, isBigEndian) : bytesOf(static_cast<float>(value), isBigEndian));
        const std::string mode = randomMode(floats);
        const std::string name =
            add("FloatReg", registerAt(address, isDouble ? 8 : 4, mode) + endianess(isBigEndian));
        Refs unused;
        keep(isOdd ? unused : floats, {name, 20000, false, isWritable(mode), -1000, 1000}, mode);
    }

    void makeString(bool isRegister)
    {
        if (!isRegister) {
            const std::string target = element("pValue", random.pick(strings).name);
            const std::string name = add("String", random.chance(30) ? "<Value>some text</Value>" : target);
            askValue("string", name);
            return askWrite("string", name, "v");
        }
        std::vector<std::uint8_t> bytes(1 + random.below(24));
        for (std::uint8_t &byte : bytes)
            byte = static_cast<std::uint8_t>(random.between(' ', '~'));
        if (random.chance(50))
            random.pick(bytes) = 0;
        const std::string mode = randomMode(strings);
        const std::string name = add("StringReg", registerAt(place(bytes), bytes.size(), mode));
        askValue("string", name);
        askWrite("string", name, std::string(1 + random.below(bytes.size()), 'w'));
        askWrite("string", name, std::string(bytes.size() + 1, 'w'));
        if (mode != "WO")
            strings.push_back({name});
    }

    void makeRegister(bool)
    {
        const std::size_t length = 1 + random.below(40);
        askValue("register", add("Register", registerAt(placeRandom(length), length, "RW")));
    }

    void makeValueNode(bool isInteger)
    {
        Refs &pool = isInteger || random.chance(20) ? integers : floats;
        Ref ref{"", 1e6, isInteger, true, -1000, 1e6};
        std::string children;
        if (random.chance(30))
            children = element("Value", numberIn(ref));
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

    /// With targets that can be written, since the oracle does not look at their modes.
    void makeIndexed(bool isInteger)
    {
        Refs &pool = isInteger ? integers : floats;
        Ref ref{"", 1e6, isInteger, false, -1000, 1e6};
        const auto value = [&](const std::string &tag) {
            const Ref &target = random.pick(pool);
            if (!target.isWritable || random.chance(50))
                return element(tag, numberIn(ref));
            ref.bound = std::max(ref.bound, target.bound);
            return element("p" + tag, target.name);
        };
        std::string children = element("pIndex", random.pick(smallNumbers).name);
        for (int index = 0; index < 8; ++index) {
            if (random.chance(50))
                children += value("ValueIndexed Index=\"" + std::to_string(index) + "\"");
        }
        children += value("ValueDefault");
        ref.name = add(isInteger ? "Integer" : "Float", children);
        keep(pool, ref);
    }

    /// Names that begin as functions and keywords do are among them.
    Symbols symbols(Arithmetic arithmetic)
    {
        constexpr std::array<const char *, 8> names{"A", "AB", "X1", "E1", "SINE", "PIX", "FROMA", "TOP"};
        const bool isInteger = arithmetic != Arithmetic::Float;
        Symbols result;
        for (std::size_t at = random.below(3); at < names.size(); at += 1 + random.below(4)) {
            const Ref &ref = random.pick(isInteger || random.chance(40) ? integers : floats);
            const std::string name = names[at] + std::string{random.chance(10) ? ".Value" : ""};
            if (arithmetic != Arithmetic::Integer && ref.bound > smallEnoughForFloats)
                continue;
            result.elements += element(named("pVariable", name), ref.name);
            result.leaves.push_back({name, ref.bound, ref.isWhole});
        }
        result.areVariables = random.chance(50);
        if (result.areVariables)
            return result;
        const std::string constant = isInteger ? std::to_string(random.below(100000)) : "0.125";
        result.elements += element(named("Constant", "CONST"), constant);
        result.leaves.push_back({"CONST", 1e5, isInteger});
        Term term = randomFormula(random, arithmetic, result.leaves, false, 2);
        result.elements += element(named("Expression", "EXPR"), escaped(term.text));
        term.text = "EXPR";
        term.precedence = Term{}.precedence;
        result.leaves.push_back(term);
        return result;
    }

    void makeSwissKnife(bool isInteger)
    {
        const Arithmetic arithmetic = isInteger ? Arithmetic::Integer : Arithmetic::Float;
        const Symbols known = symbols(arithmetic);
        const Term formula = randomFormula(random, arithmetic, known.leaves, known.areVariables, 4);
        const std::string name = add(isInteger ? "IntSwissKnife" : "SwissKnife",
                                     known.elements + element("Formula", escaped(formula.text)));
        keep(isInteger ? integers : floats, {name, isInteger ? anything : formula.bound, formula.isWhole});
    }

    /// With any formula, to be read only.
    void makeConverter(bool isInteger)
    {
        const Arithmetic arithmetic = isInteger ? Arithmetic::ExactInteger : Arithmetic::Float;
        const Ref inner = random.pick(isInteger || random.chance(30) ? integers : floats);
        if (inner.bound > smallEnoughForFloats)
            return;
        Symbols known = symbols(arithmetic);
        known.leaves.push_back({"TO", inner.bound, inner.isWhole});
        const Term formula = randomFormula(random, arithmetic, known.leaves, known.areVariables, 3);
        const std::string formulas =
            "<FormulaTo>FROM</FormulaTo>" + element("FormulaFrom", escaped(formula.text));
        const std::string name = add(isInteger ? "IntConverter" : "Converter",
                                     known.elements + formulas + element("pValue", inner.name));
        keep(isInteger ? integers : floats, {name, formula.bound, formula.isWhole});
    }

    /// With formulas that undo each other, to be written too.
    void makeLinearConverter(bool isInteger)
    {
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
        const std::array<const char *, 3> slopes{"Automatic", "Varying",
                                                 isFalling ? "Decreasing" : "Increasing"};
        const std::string slope = random.pick(slopes);
        ref.name = add(isInteger ? "IntConverter" : "Converter",
                       element("FormulaTo", to) + element("FormulaFrom", from) + element("pValue", ref.name) +
                           element("Slope", slope));
        const double rise = isFalling ? -factor : factor;
        ref.bound = ref.bound * factor + offset;
        std::tie(ref.low, ref.high) = std::minmax({ref.low * rise + offset, ref.high * rise + offset});
        ref.increment = 1;
        ref.hasRange = ref.hasRange && slope != "Varying"; // then ours has no limits
        keep(isInteger ? integers : floats, ref);
    }

    void makeBoolean(bool)
    {
        constexpr std::array<const char *, 3> values{"", "<OnValue>6</OnValue>",
                                                     "<OnValue>6</OnValue><OffValue>0x3</OffValue>"};
        const std::string source = element("pValue", byteRegister(random.between(0, 7)));
        const std::string name =
            add("Boolean", random.chance(20) ? "<Value>1</Value>" : source + random.pick(values));
        askValue("boolean", name);
        askWrite("boolean", name, "true");
        askWrite("boolean", name, "false");
        switches.push_back({name});
    }

    /// Also as a variable, and as the target of an integer, which the oracle can't write.
    void makeEnumeration(bool)
    {
        const std::size_t count = 1 + random.below(6);
        std::vector<std::int64_t> values;
        std::string children;
        for (std::size_t entry = 0; entry < count; ++entry) {
            values.push_back(static_cast<std::int64_t>(entry) * 37 + random.between(0, 36));
            children += element(named("EnumEntry", "Entry" + std::to_string(entry)),
                                "<DisplayName>E</DisplayName><NumericValue>1.5</NumericValue>" +
                                    element("Value", std::to_string(values.back())));
        }
        const std::int64_t value = random.pick(values);
        const std::string mode = random.chance(30) ? "RO" : "RW";
        children += random.chance(20) ? element("Value", std::to_string(value))
                                      : element("pValue", byteRegister(value, mode));
        const std::string name = add("Enumeration", children);
        askValue("enumeration", name);
        askWrite("enumeration", name, "Entry" + std::to_string(random.below(count)));
        askWrite("enumeration", name, "NoEntry");
        askValue("integer", add("Integer", element("pValue", name)));
        switches.push_back({name});
        integers.push_back({name, 256});
    }

    void makeCommand(bool)
    {
        const Ref &target = random.pick(integers);
        if (!target.isWritable || target.low > 0 || target.high < 8)
            return;
        const Ref &value = random.pick(smallNumbers);
        const std::string name = add("Command", element("pValue", target.name) +
                                                    (random.chance(50) ? element("pCommandValue", value.name)
                                                                       : element("CommandValue", "0x7")));
        reads.push_back({"mode", "command", name, ""});
        askWrite("command", name, "");
    }

    /// Nobody refers to these: the oracle looks at the conditions of a node, but not at those behind it.
    void makeConditioned(bool isInteger)
    {
        const std::string kind = isInteger ? "integer" : "float";
        const Ref inner = random.pick(isInteger ? integers : floats);
        const bool isRegister = isInteger && random.chance(30);
        std::string name;
        if (isRegister) {
            const std::string children = registerAt(placeRandom(2), 2, "RW");
            name = add("IntReg", children + conditions(true));
        } else if (random.chance(20)) {
            name =
                add(isInteger ? "IntSwissKnife" : "SwissKnife",
                    element("pVariable Name=\"V\"", inner.name) + "<Formula>V</Formula>" + conditions(false));
        } else
            name = add(isInteger ? "Integer" : "Float",
                       element("pValue", inner.name) + conditions(inner.isWritable));
        askValue(kind, name);
        if (inner.isWritable)
            askWrite(kind, name, isRegister ? "1" : numberIn(inner));
    }

    Random random;
    Memory memory;
    std::uint64_t nextAddress;
    int nodeCount = 0;
    std::string xml;
    std::vector<Question> reads;
    std::vector<Question> writes; ///< asked behind all reads: constants keep what is written to them

    Refs smallNumbers; ///< integers of 0 to 7 that nobody writes
    Refs switches;     ///< all that can be a condition
    Refs integers;
    Refs floats;
    Refs strings;
};

} // namespace

Questionnaire generatedCamera(std::uint64_t seed, int count)
{
    return DescriptionGenerator{seed}.generate(count);
}
