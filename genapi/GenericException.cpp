// SPDX-License-Identifier: MIT
// The texts of an exception, shared by its copies so that copying never throws.
#include "GenericException.h"

namespace GenICam_3_2_TVN {

struct GenericException::Report
{
    std::string description;
    std::string sourceFileName;
    unsigned sourceLine;
    std::string exceptionType;
    std::string whole;
};

GenericException::GenericException(const char *description, const char *sourceFileName, unsigned sourceLine,
                                   const char *exceptionType)
    : report{
          std::make_shared<const Report>(Report{description, sourceFileName, sourceLine, exceptionType,
                                                std::string{description} + " (" + exceptionType + ", " +
                                                    sourceFileName + ":" + std::to_string(sourceLine) + ")"})}
{}

GenericException::~GenericException() = default;

const char *GenericException::GetDescription() const noexcept
{
    return report->description.c_str();
}

const char *GenericException::what() const noexcept
{
    return report->whole.c_str();
}

const char *GenericException::GetSourceFileName() const noexcept
{
    return report->sourceFileName.c_str();
}

unsigned GenericException::GetSourceLine() const noexcept
{
    return report->sourceLine;
}

const char *GenericException::GetExceptionType() const noexcept
{
    return report->exceptionType.c_str();
}

} // namespace GenICam_3_2_TVN
