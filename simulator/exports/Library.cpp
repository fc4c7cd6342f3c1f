// SPDX-License-Identifier: MIT
// The life of the library, what it tells of itself, and the last error of a thread.
#include "Call.h"
#include "Exports.h"
#include "LastError.h"

using namespace simulator;

GC_ERROR GCInitLib()
{
    Call call{"GCInitLib"};
    return call.answerAlways([&](Producer &producer) {
        producer.readEnvironment();
        producer.strike(call.about());
        producer.open();
    });
}

GC_ERROR GCCloseLib()
{
    return Call{"GCCloseLib"}.answer([](Producer &producer) { producer.close(); });
}

GC_ERROR GCGetInfo(TL_INFO_CMD command, INFO_DATATYPE *type, void *buffer, std::size_t *size)
{
    Call call{"GCGetInfo", Command{command}, Buffer{buffer}};
    return call.answer([&](Producer &producer) {
        call.outputInfo(producerInfo(command, producer.configuration()), type, buffer, size);
    });
}

// Answers in every state of the library: a failed GCInitLib has a text too. Its own failures leave the record
// as it is, so that a call with a larger buffer still gets it.
GC_ERROR GCGetLastError(GC_ERROR *code, char *text, std::size_t *size)
{
    const LastError record = lastError();
    Call call{"GCGetLastError", Buffer{text}};
    const GC_ERROR result = call.answerAlways([&](Producer &producer) {
        producer.strike(call.about());
        require(code, "the pointer to the code");
        require(size, "the pointer to the size");
        call.output(std::to_string(record.code));
        call.outputText(record.text(), text, size);
        *code = record.code;
    });
    if (result != GC_ERR_SUCCESS)
        rememberError(record.code, record.text());
    return result;
}
