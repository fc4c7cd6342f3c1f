// SPDX-License-Identifier: MIT
// Random cameras over the whole grammar of descriptions, the same for the same seed: nodes that refer to one
// another, a memory that fits them, and the questions to ask.
#pragma once

#include "FormulaGenerator.h"
#include "Questionnaire.h"
#include "Random.h"

#include <cstdint>
#include <string>
#include <vector>

class DescriptionGenerator
{
public:
    explicit DescriptionGenerator(std::uint64_t seed)
        : random{seed}, nextAddress{random.chance(50) ? 0x10000U : 0x123456780000U}
    {}

    /// \param count  nodes of random kinds, besides some dozens that they build on
    Questionnaire generate(int count);

private:
    /// A node that others can refer to. It is readable in any case.
    struct Ref
    {
        std::string name;
        double bound = 0; ///< see Term
        bool isWhole = true;
        bool isWritable = false;
        double low = 0; ///< from here to high it may be written
        double high = 0;
        std::int64_t increment = 1;
        bool hasRange = false;  ///< it states Min and Max
        std::int64_t known = 0; ///< the value of a small number
    };
    using Refs = std::vector<Ref>;
    struct Symbols
    {
        std::string elements; ///< pVariable, Constant and Expression
        std::vector<Term> leaves;
        bool areVariables = false; ///< all of them
    };
    struct Field
    {
        std::string children;
        int width;
    };

    void makeSmallNumber();
    void makeSwitch();
    void makeIntReg();
    void makeMaskedIntReg();
    void makeStructReg();
    void makeFloatReg();
    void makeStringReg();
    void makeRegister();
    void makeInteger() { makeValueNode(true); }
    void makeFloat() { makeValueNode(false); }
    void makeIndexedInteger() { makeIndexed(true); }
    void makeIndexedFloat() { makeIndexed(false); }
    void makeIntSwissKnife() { makeSwissKnife(true); }
    void makeFloatSwissKnife() { makeSwissKnife(false); }
    void makeIntConverter() { makeConverter(true); }
    void makeFloatConverter() { makeConverter(false); }
    void makeLinearConverter();
    void makeBoolean();
    void makeEnumeration();
    void makeCommand();
    void makeString();
    void makeConditioned();
    void makeValueNode(bool isInteger);
    void makeIndexed(bool isInteger);
    void makeSwissKnife(bool isInteger);
    void makeConverter(bool isInteger);

    std::string newName(const std::string &stem);
    std::string add(const std::string &tag, const std::string &children);
    void ask(const std::string &action, const std::string &kind, const std::string &node);
    void askWrite(const std::string &kind, const std::string &node, const std::string &value);
    /// Asks for all that the node has, and offers it to later nodes.
    void keep(Refs &pool, const Ref &ref, const std::string &mode = "RW");
    std::string numberIn(const Ref &ref);
    std::string range(Ref &ref);

    std::uint64_t place(const std::vector<std::uint8_t> &bytes);
    std::vector<std::uint8_t> randomBytes(std::size_t count);
    std::string registerAt(std::uint64_t address, std::size_t length, const std::string &mode);
    std::string addressPart(std::uint64_t &rest, std::size_t length);
    std::string constantNode(std::int64_t value);
    std::string randomMode(const Refs &pool);
    Field randomField(std::size_t length, bool isBigEndian);
    Ref integerRef(const std::string &name, int width, bool isSigned, const std::string &mode) const;
    std::string byteRegister(std::uint8_t content, const std::string &mode = "RW");
    Symbols symbols(Arithmetic arithmetic);
    std::string conditions(bool canBeWritten);

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
