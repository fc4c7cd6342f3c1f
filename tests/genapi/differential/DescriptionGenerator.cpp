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
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::array<double, 7> oddFloats{
    infinity, -infinity, std::numeric_limits<double>::quiet_NaN(), -0.0, 5e-324, 1e-42, 1.7e308};

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
    bool hasRange = false; ///< it has a Min and a Max that both sides see
};
using Refs = std::vector<Ref>;

/// Which bits of a register a number has.
struct Bits
{
    std::string children;
    int width = 0;
    bool isSigned = false;
};

/// A node over a byte register, whose name replaces each "@"; a "#" stands for the content of the register.
struct Pattern
{
    const char *tag;
    std::string children;
    std::vector<const char *> written = {};
};

std::string entry(const std::string &name, const std::string &value, const std::string &more = "")
{
    return "<EnumEntry Name='" + name + "'><Value>" + value + "</Value>" + more + "</EnumEntry>";
}

const std::vector<Pattern> smallNumberPatterns{
    {"Integer", "<Value>#</Value>"},
    {"Integer", "<pValue>@</pValue>"},
    {"Integer",
     "<pIndex>@</pIndex><ValueIndexed Index='99'>1</ValueIndexed><pValueDefault>@</pValueDefault>"},
    {"IntSwissKnife", "<pVariable Name='VAR'>@</pVariable><Formula>VAR*2-VAR</Formula>"},
    {"IntConverter", "<FormulaTo>FROM</FormulaTo><FormulaFrom>TO*4/4</FormulaFrom><pValue>@</pValue>"},
    {"IntConverter", "<FormulaTo>FROM</FormulaTo><FormulaFrom>(7-TO)^7</FormulaFrom><pValue>@</pValue>"},
};

/// Over a byte that is 0 or 2. Each but a Command can be a condition.
const std::vector<Pattern> switchPatterns{
    {"Integer", "<pValue>@</pValue>", {"7", "-1", "256"}},
    {"Float", "<Value>#</Value>", {"2.5"}},
    {"Boolean", "<Value>1</Value>", {"true", "false"}},
    {"Boolean", "<pValue>@</pValue><OnValue>2</OnValue>", {"true", "false"}},
    {"Boolean", "<pValue>@</pValue><OnValue>6</OnValue><OffValue>0x3</OffValue>", {"true", "false"}},
    {"Enumeration",
     entry("Off", "0") + entry("On", "2", "<NumericValue>1.5</NumericValue>") +
         entry("Far", "255", "<IsSelfClearing>Yes</IsSelfClearing>") + "<pValue>@</pValue>",
     {"On", "Far", "NoEntry"}},
    {"Enumeration", entry("One", "#") + "<Value>#</Value>", {"One"}},
    {"IntSwissKnife", "<pVariable Name='X'>@</pVariable><Formula>X &gt; 1</Formula>"},
    {"IntConverter", "<FormulaTo>FROM*2</FormulaTo><FormulaFrom>TO/2</FormulaFrom><pValue>@</pValue>", {"3"}},
    {"SwissKnife", "<pVariable Name='X'>@</pVariable><Formula>X*2</Formula>"},
    {"Converter", "<FormulaTo>FROM/2</FormulaTo><FormulaFrom>TO*2</FormulaFrom><pValue>@</pValue>", {"6"}},
    {"Command", "<pValue>@</pValue><CommandValue>0x7</CommandValue>", {""}},
    {"Command", "<pValue>@</pValue><pCommandValue>@</pCommandValue>", {""}},
};

const Pattern plainEnumeration{"Enumeration", entry("Off", "0") + entry("Far", "255") + "<pValue>@</pValue>"};
/// The pattern with the texts in the place of its "@"s, in order.
std::string fill(std::string_view pattern, std::initializer_list<std::string> texts)
{
    std::string result;
    const std::string *next = texts.begin();
    for (const char letter : pattern)
        result += letter == '@' ? *next++ : std::string(1, letter);
    return result;
}

std::string element(const std::string &tag, const std::string &text)
{
    return fill("<@>@</@>", {tag, text, tag});
}

std::string escaped(const std::string &formula)
{
    return "<![CDATA[" + formula + "]]>";
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
        constexpr std::array<Maker, 24> makers{
            &Self::makeIntReg,     &Self::makeIntReg,     &Self::makeStructReg,  &Self::makeFloatReg,
            &Self::makeString,     &Self::makeRegister,   &Self::makeSwitch,     &Self::makeSwitch,
            &Self::makeSwitch,     &Self::makeValueNode,  &Self::makeValueNode,  &Self::makeLinearConverter,
            &Self::makeIndexed,    &Self::makeConverter,  &Self::makeConverter,  &Self::makeSwissKnife,
            &Self::makeSwissKnife, &Self::makeSwissKnife, &Self::makeSwissKnife, &Self::makeEnumerated,
            &Self::makeSharedWord, &Self::makeSharedWord, &Self::makeCopied,     &Self::makeSelfClearing};
        for (int base = 0; base < 8; ++base)
            makeSmallNumber();
        for (int base = 0; base < 6; ++base) {
            makeIntReg(true);
            makeFloatReg(false);
            makeString(true);
            makeSwitch(false);
        }
        for (int made = 0; made < count; ++made) {
            const Maker maker = random.pick(makers);
            (this->*maker)(random.chance(50));
        }
        reads.insert(reads.end(), writes.begin(), writes.end());
        return {"<RegisterDescription ModelName='Generated' "
                "xmlns='http://www.genicam.org/GenApi/Version_1_1'>\n<Port Name='Device'/>\n" +
                    xml + "</RegisterDescription>\n",
                memory, reads};
    }

private:
    // What all makers use.

    std::string newName(const std::string &stem) { return stem + std::to_string(++nodeCount); }

    std::string add(const std::string &tag, const std::string &children)
    {
        const std::string name = newName(tag);
        xml += fill("<@ Name='@'>@</@>\n", {tag, name, children, tag});
        return name;
    }

    void askValue(const std::string &node)
    {
        reads.push_back({"get", node, ""});
        reads.push_back({"mode", node, ""});
    }

    void askWrite(const std::string &node, const std::string &value)
    {
        writes.push_back({"set", node, value});
    }

    void askLimits(const Ref &ref)
    {
        reads.push_back({"min", ref.name, ""});
        reads.push_back({"max", ref.name, ""});
        if (ref.increment > 1)
            reads.push_back({"inc", ref.name, ""});
        if (ref.isWritable)
            askWrite(ref.name, decimal(ref.high + 1));
    }

    /// Asks for all that the node has, and offers it to later nodes.
    void keep(Refs &pool, const Ref &ref, const std::string &mode = "RW")
    {
        askValue(ref.name);
        if (ref.hasRange)
            askLimits(ref);
        if (ref.isWritable)
            askWrite(ref.name, numberIn(ref));
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
        const std::string least = element("Min", decimal(ref.low));
        if (ref.isWhole && random.chance(30))
            return least + element("pMax", constantNode(static_cast<std::int64_t>(ref.high)));
        return least + element("Max", decimal(ref.high));
    }

    std::uint64_t place(const std::vector<std::uint8_t> &bytes)
    {
        const std::uint64_t address = nextAddress + random.below(4);
        nextAddress = address;
        for (const std::uint8_t byte : bytes)
            memory[nextAddress++] = byte;
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
        const auto &[index, value] = random.pick(smallNumbers);
        const auto &[offset, offsetValue] = random.pick(smallNumbers);
        const std::int64_t factor = random.between(1, 300);
        const std::string text = std::to_string(factor);
        const std::string formula =
            fill("<pVariable Name='I'>@</pVariable><Formula>5+I*@</Formula>", {index, text});
        const std::string inlineName = newName("Inline");
        const std::array<std::pair<std::int64_t, std::string>, 7> parts{{
            {factor, element("Address", text)},
            {value, element("pAddress", index)},
            {5 + value * factor, element("IntSwissKnife", formula)},
            {value * factor, fill("<pIndex Offset='@'>@</pIndex>", {text, index})},
            {value * offsetValue, fill("<pIndex pOffset='@'>@</pIndex>", {offset, index})},
            {value * static_cast<std::int64_t>(length), element("pIndex", index)},
            {5 + value * factor, fill("<IntSwissKnife Name='@'>@</IntSwissKnife>", {inlineName, formula})},
        }};
        const auto &[summand, part] = random.pick(parts);
        if (&part == &parts.back().second)
            askValue(inlineName);
        rest -= static_cast<std::uint64_t>(summand);
        return part;
    }

    /// Written, from a constant, or computed, which can give any length, 0 too.
    std::string lengthOf(std::size_t length)
    {
        const std::string written = std::to_string(length);
        if (smallNumbers.empty() || random.chance(60))
            return element("Length", written);
        const auto &[factor, value] = random.pick(smallNumbers);
        const std::string rest = std::to_string(static_cast<std::int64_t>(length) - 3 * value);
        const std::string formula =
            fill("<pVariable Name='I'>@</pVariable><Formula>@+I*3</Formula>", {factor, rest});
        return element("pLength", random.chance(40) ? constantNode(static_cast<std::int64_t>(length))
                                                    : add("IntSwissKnife", formula));
    }

    std::string registerAt(std::uint64_t address, std::size_t length, const std::string &mode)
    {
        std::uint64_t rest = address;
        std::string children;
        for (std::size_t count = smallNumbers.empty() ? 0 : random.below(3); count > 0; --count)
            children += addressPart(rest, length);
        const std::string first = random.chance(10)
                                      ? element("pAddress", constantNode(static_cast<std::int64_t>(rest)))
                                      : element("Address", random.notation(rest));
        children = random.chance(50) ? first + children : children + first;
        children += lengthOf(length);
        if (random.chance(70))
            children += element("Cachable", random.pick({"NoCache", "WriteThrough", "WriteAround"}));
        return children + (mode.empty() ? "" : element("AccessMode", mode)) + element("pPort", "Device");
    }

    std::string addPattern(const Pattern &pattern, std::int64_t content, const std::string &more = "")
    {
        const std::uint64_t address = place({static_cast<std::uint8_t>(content)});
        const std::string source = add("IntReg", registerAt(address, 1, "RW"));
        std::string children;
        for (const char letter : std::string_view{pattern.children})
            children += letter == '@'   ? source
                        : letter == '#' ? std::to_string(content)
                                        : std::string(1, letter);
        const std::string name = add(pattern.tag, children + more);
        askValue(name);
        for (const char *const value : pattern.written)
            askWrite(name, value);
        return name;
    }

    std::string maybe(const std::string &text) { return random.chance(50) ? text : ""; }

    std::string endianess(bool isBigEndian)
    {
        return isBigEndian ? element("Endianess", "BigEndian") : maybe(element("Endianess", "LittleEndian"));
    }

    Bits bits(const std::string &place, std::size_t count)
    {
        const bool isSigned = random.chance(35);
        const std::string sign = isSigned ? element("Sign", "Signed") : maybe(element("Sign", "Unsigned"));
        return {place + sign, static_cast<int>(count), isSigned};
    }

    Bits field(std::size_t length, bool isBigEndian)
    {
        const std::size_t size = 8 * length;
        const std::size_t count = 1 + random.below(std::min<std::size_t>(size, 60));
        const std::size_t lowest = random.below(size - count + 1);
        const auto numbered = [&](std::size_t bit) {
            return std::to_string(isBigEndian ? size - 1 - bit : bit);
        };
        return bits(fill(count == 1 ? "<Bit>@</Bit>" : "<LSB>@</LSB><MSB>@</MSB>",
                         {numbered(lowest), numbered(lowest + count - 1)}),
                    count);
    }

    static Ref integerRef(const std::string &name, const Bits &bits, const std::string &mode)
    {
        const double half = std::ldexp(1, bits.width - 1);
        const double low = bits.isSigned ? std::max(-half, -exactWhole) : 0;
        const double high = std::min(bits.isSigned ? half - 1 : 2 * half - 1, exactWhole);
        return {name, 2 * half, true, isWritable(mode), low, high};
    }

    /// The first of a pool can be read and written.
    template <class Pool>
    std::string randomMode(const Pool &pool)
    {
        return pool.empty() ? "RW" : random.pick({"", "RO", "RO", "RW", "RW", "RW", "RW", "WO"});
    }

    /// Nobody refers to those with conditions: the oracle does not look at the conditions behind a node.
    void makeSwitch(bool hasConditions)
    {
        const Pattern &pattern = random.pick(switchPatterns);
        std::string conditions;
        for (const char *const tag : {"pIsImplemented", "pIsAvailable", "pIsLocked"}) {
            if (hasConditions && random.chance(40))
                conditions += element(tag, random.pick(switches));
        }
        if (hasConditions && !pattern.written.empty() && random.chance(30))
            conditions += element("ImposedAccessMode", random.pick({"RO", "RW", "WO"}));
        const std::string name = addPattern(pattern, random.chance(60) ? 2 : 0, conditions);
        if (conditions.empty() && pattern.tag != std::string_view{"Command"})
            switches.push_back(name);
    }

    void makeSmallNumber()
    {
        const std::int64_t value = random.between(0, 7);
        smallNumbers.emplace_back(addPattern(random.pick(smallNumberPatterns), value), value);
    }

    Ref addInteger(const std::string &tag, const Bits &own, bool isBigEndian, const std::string &place,
                   const std::string &mode)
    {
        return integerRef(add(tag, place + own.children + endianess(isBigEndian)), own, mode);
    }

    /// Wider fields can't be written: the oracle loses their limits.
    void makeIntReg(bool isPlain)
    {
        const std::size_t length = random.pick({1U, 2U, 2U, 3U, 4U, 4U, 8U});
        const bool isBigEndian = random.chance(50);
        const Bits own = isPlain ? bits("", 8 * length) : field(length, isBigEndian);
        const std::string mode = !isPlain && own.width > 32 ? "RO" : randomMode(integers);
        Ref ref = addInteger(isPlain ? "IntReg" : "MaskedIntReg", own, isBigEndian,
                             registerAt(placeRandom(length), length, mode), mode);
        ref.hasRange = own.width <= 32;
        keep(integers, ref, mode);
    }

    void makeStructReg(bool isBigEndian)
    {
        std::string children = registerAt(placeRandom(4), 4, "RW") + endianess(isBigEndian);
        for (std::size_t count = 1 + random.below(4); count > 0; --count) {
            const Bits own = field(4, isBigEndian);
            const std::string name = newName("StructEntry");
            const std::string mode = random.pick({"RO", "RW"});
            children += fill("<StructEntry Name='@'><AccessMode>@</AccessMode>@</StructEntry>",
                             {name, mode, own.children});
            keep(integers, integerRef(name, own, mode));
        }
        xml += element("StructReg", children) + "\n";
    }

    /// Nodes of all kinds of cachability over one word and parts of it, and what asks them all in one call.
    void makeSharedWord(bool isBigEndian)
    {
        const std::uint64_t address = placeRandom(4);
        std::string variables;
        std::string sum = "0";
        for (std::size_t count = 2 + random.below(5); count > 0; --count) {
            const std::size_t length = random.pick({1U, 2U, 2U, 4U, 4U});
            const std::uint64_t first = address + random.below(5 - length);
            const Bits own = field(length, isBigEndian);
            const Ref ref =
                addInteger("MaskedIntReg", own, isBigEndian, registerAt(first, length, "RW"), "RW");
            keep(integers, ref);
            const std::string variable = "V" + std::to_string(count);
            variables += fill("<pVariable Name='@'>@</pVariable>", {variable, ref.name});
            sum += "*3+" + variable;
        }
        const std::string all = add("IntSwissKnife", variables + element("Formula", sum));
        keep(integers, {all, anything});
        writes.push_back({"get", all, ""}); // behind a write nothing is cached
    }

    void makeFloatReg(bool isDouble)
    {
        const bool isOdd = !floats.empty() && random.chance(20);
        const bool isBigEndian = random.chance(50);
        const double value =
            isOdd ? random.pick(oddFloats) : static_cast<double>(random.between(-1000000, 1000000)) / 64;
        const std::uint64_t address =
            place(isDouble ? bytesOf(value, isBigEndian) : bytesOf(static_cast<float>(value), isBigEndian));
        const std::string mode = randomMode(floats);
        const std::string children = registerAt(address, isDouble ? 8 : 4, mode) + endianess(isBigEndian);
        Refs unused;
        keep(isOdd ? unused : floats,
             {add("FloatReg", children), 20000, false, isWritable(mode), -1000, 1000}, mode);
    }

    void makeStringNode()
    {
        const std::string target = element("pValue", random.pick(strings));
        const std::string name = add("String", random.chance(30) ? "<Value>some text</Value>" : target);
        askValue(name);
        askWrite(name, "v");
    }

    void makeString(bool isRegister)
    {
        if (!isRegister)
            return makeStringNode();
        std::vector<std::uint8_t> bytes(random.chance(25) ? 0 : random.below(24));
        for (std::uint8_t &byte : bytes)
            byte = static_cast<std::uint8_t>(random.chance(5) ? 0 : random.between(' ', '~'));
        const std::string mode = randomMode(strings);
        const std::string name = add("StringReg", registerAt(place(bytes), bytes.size(), mode));
        askValue(name);
        askWrite(name, std::string(bytes.size() / 2 + 1, 'w'));
        askWrite(name, std::string(bytes.size() + 1, 'w'));
        if (mode != "WO")
            strings.push_back(name);
    }

    /// Of length 0 with a float, since the oracle takes none of that length for others.
    void makeRegister(bool isEmpty)
    {
        if (isEmpty && random.chance(30))
            return askValue(add("FloatReg", registerAt(nextAddress, 0, "RW")));
        const std::size_t length = 1 + random.below(40);
        askValue(add("Register", registerAt(placeRandom(length), length, "RW")));
    }

    void makeValueNode(bool isInteger)
    {
        Ref ref{"", 1e6, isInteger, true, -1000, 1e6};
        std::string children = element("Value", numberIn(ref));
        if (random.chance(70)) {
            ref = random.pick(isInteger || random.chance(20) ? integers : floats);
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
        const auto value = [&](const std::string &tag, const std::string &attribute) {
            const Ref &target = random.pick(pool);
            const bool isLink = target.isWritable && random.chance(50);
            ref.bound = isLink ? std::max(ref.bound, target.bound) : ref.bound;
            return fill(isLink ? "<p@@>@</p@>" : "<@@>@</@>",
                        {tag, attribute, isLink ? target.name : numberIn(ref), tag});
        };
        std::string children = element("pIndex", random.pick(smallNumbers).first);
        for (int index = 0; index < 8; ++index) {
            if (random.chance(50))
                children += value("ValueIndexed", " Index='" + std::to_string(index) + "'");
        }
        children += value("ValueDefault", "");
        ref.name = add(isInteger ? "Integer" : "Float", children);
        keep(pool, ref);
    }

    /// Variables, a constant and an expression for a formula, and what stands for them in it. Names that begin as
    /// functions and keywords do are among them.
    std::pair<std::string, std::vector<Term>> symbols(Arithmetic arithmetic)
    {
        constexpr std::array<const char *, 8> names{"A", "AB", "X1", "E1", "SINE", "PIX", "FROMA", "TOP"};
        const bool isInteger = arithmetic == Arithmetic::Integer;
        std::string elements;
        std::vector<Term> leaves;
        for (std::size_t at = random.below(3); at < names.size(); at += 1 + random.below(4)) {
            const Ref &ref = random.pick(isInteger || random.chance(40) ? integers : floats);
            const std::string name = names[at] + std::string{random.chance(10) ? ".Value" : ""};
            if (!isInteger && ref.bound > smallEnoughForFloats)
                continue;
            elements += fill("<pVariable Name='@'>@</pVariable>", {name, ref.name});
            leaves.push_back({name, ref.bound, ref.isWhole});
        }
        if (random.chance(50))
            return {elements, leaves};
        leaves.push_back({"CONST", 1e5, isInteger});
        const Term term = randomTerm(random, arithmetic, leaves, 2);
        leaves.push_back({"EXPR", term.bound, term.isWhole});
        const std::string constant = isInteger ? std::to_string(random.below(100000)) : "0.125";
        return {elements + fill("<Constant Name='CONST'>@</Constant><Expression Name='EXPR'>@</Expression>",
                                {constant, escaped(term.text)}),
                leaves};
    }

    void makeSwissKnife(bool isInteger)
    {
        const Arithmetic arithmetic = isInteger ? Arithmetic::Integer : Arithmetic::Float;
        const auto [elements, leaves] = symbols(arithmetic);
        const Term formula = randomTerm(random, arithmetic, leaves, 4);
        const std::string name = add(isInteger ? "IntSwissKnife" : "SwissKnife",
                                     elements + element("Formula", escaped(formula.text)));
        keep(isInteger ? integers : floats, {name, isInteger ? anything : formula.bound, formula.isWhole});
    }

    /// With any formula, to be read only; not of integers, which the oracle computes with doubles here.
    void makeConverter(bool)
    {
        const Ref &inner = random.pick(random.chance(30) ? integers : floats);
        if (inner.bound > smallEnoughForFloats)
            return;
        auto [elements, leaves] = symbols(Arithmetic::Float);
        leaves.push_back({"TO", inner.bound, inner.isWhole});
        const Term formula = randomTerm(random, Arithmetic::Float, leaves, 3);
        elements += fill("<FormulaTo>FROM</FormulaTo><FormulaFrom>@</FormulaFrom><pValue>@</pValue>",
                         {escaped(formula.text), inner.name});
        keep(floats, {add("Converter", elements), formula.bound, formula.isWhole});
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
        const std::string slope =
            random.pick({"Automatic", "Varying", isFalling ? "Decreasing" : "Increasing"});
        const std::string formulas =
            isFalling
                ? fill("<FormulaTo>(@-FROM)/@</FormulaTo><FormulaFrom>@-TO*@</FormulaFrom>", {b, a, b, a})
                : fill("<FormulaTo>(FROM-@)/@</FormulaTo><FormulaFrom>TO*@+@</FormulaFrom>", {b, a, a, b});
        ref.name = add(isInteger ? "IntConverter" : "Converter",
                       formulas + fill("<pValue>@</pValue><Slope>@</Slope>", {ref.name, slope}));
        const double rise = isFalling ? -factor : factor;
        ref.bound = ref.bound * factor + offset;
        std::tie(ref.low, ref.high) = std::minmax({ref.low * rise + offset, ref.high * rise + offset});
        ref.increment = 1;
        ref.hasRange = ref.hasRange && slope != "Varying"; // then ours has no limits
        keep(isInteger ? integers : floats, ref);
    }

    /// An enumeration as the target of an integer or of a float, which the oracle can't write, and as a variable, with
    /// one of its entries: of the present one alone the oracle knows the value.
    void makeEnumerated(bool isInteger)
    {
        const std::string name =
            isInteger ? addPattern(switchPatterns[5], 255) : addPattern(plainEnumeration, 255);
        keep(isInteger ? integers : floats,
             {add(isInteger ? "Integer" : "Float", element("pValue", name)), 256});
        integers.push_back({name, 256});
        const std::string suffix = random.pick({".Entry.Far", ".Enum.Far"});
        keep(integers, {add("IntSwissKnife", fill("<pVariable Name='V@'>@</pVariable><Formula>V@+1</Formula>",
                                                  {suffix, name, suffix})),
                        257});
    }

    /// The device leaves its entry by itself.
    void makeSelfClearing(bool isOn)
    {
        writes.push_back({"leave", addPattern(switchPatterns[5], isOn ? 2 : 0), "Far"});
    }

    /// With a copy of narrower limits, which the oracle does not know: they are not asked, and kept.
    void makeCopied(bool isInteger)
    {
        Ref ref = random.pick(isInteger ? integers : floats);
        const std::string tag = isInteger ? "Integer" : "Float";
        std::string limits;
        if (ref.isWritable && random.chance(50)) {
            const auto quarter = std::floor((ref.high - ref.low) / static_cast<double>(4 * ref.increment));
            ref.low += quarter * static_cast<double>(ref.increment);
            ref.high -= quarter * static_cast<double>(ref.increment);
            ref.hasRange = false;
            limits = element("Min", decimal(ref.low)) + element("Max", decimal(ref.high));
        }
        const std::string copy = add(tag, "<Value>0</Value>" + limits);
        ref.name = add(tag, element("pValue", ref.name) + element("pValueCopy", copy));
        keep(isInteger ? integers : floats, ref);
    }

    Random random;
    Memory memory;
    std::uint64_t nextAddress;
    int nodeCount = 0;
    std::string xml;
    std::vector<Question> reads;
    std::vector<Question> writes; ///< asked behind all reads: constants keep what is written to them

    /// Names and values, from 0 to 7, of integers that nobody writes.
    std::vector<std::pair<std::string, std::int64_t>> smallNumbers;
    std::vector<std::string> switches; ///< all that can be a condition
    std::vector<std::string> strings;
    Refs integers;
    Refs floats;
};

} // namespace

Questionnaire generatedCamera(std::uint64_t seed, int count)
{
    return DescriptionGenerator{seed}.generate(count);
}
