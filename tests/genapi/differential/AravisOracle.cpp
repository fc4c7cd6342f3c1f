// SPDX-License-Identifier: MIT
// aravis_oracle: answers a questionnaire from standard input by the Aravis library, one line for each question.
// A program of its own, since some descriptions end the process of that library.
#include "Questionnaire.h"

#include <arv.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <vector>

/// A device that is the memory of the questionnaire.
struct OracleDevice
{
    ArvDevice parent;
    Memory *memory;
};

struct OracleDeviceClass
{
    ArvDeviceClass parent;
};

G_DEFINE_TYPE(OracleDevice, oracle_device, ARV_TYPE_DEVICE)

namespace {

constexpr unsigned timeLimitSeconds = 20; ///< for one questionnaire; most take a hundredth of one

gboolean refuse(GError **error)
{
    g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS, "no such address");
    return FALSE;
}

OracleDevice *oracleDevice(ArvDevice *device)
{
    return G_TYPE_CHECK_INSTANCE_CAST(device, oracle_device_get_type(), OracleDevice);
}

gboolean readMemory(ArvDevice *device, guint64 address, guint32 size, void *buffer, GError **error)
{
    return load(*oracleDevice(device)->memory, address, size, buffer) ? TRUE : refuse(error);
}

gboolean writeMemory(ArvDevice *device, guint64 address, guint32 size, void *buffer, GError **error)
{
    return store(*oracleDevice(device)->memory, address, size, buffer) ? TRUE : refuse(error);
}

gboolean readRegister(ArvDevice *device, guint64 address, guint32 *value, GError **error)
{
    return readMemory(device, address, sizeof *value, value, error);
}

gboolean writeRegister(ArvDevice *device, guint64 address, guint32 value, GError **error)
{
    return writeMemory(device, address, sizeof value, &value, error);
}

/// Collects the error of a call and throws it behind the call.
class Call
{
public:
    Call() = default;
    Call(const Call &) = delete;
    Call &operator=(const Call &) = delete;
    ~Call() { g_clear_error(&error); }

    GError **out() { return &error; }

    template <class Result>
    Result checked(Result result) const
    {
        check();
        return result;
    }
    void check() const
    {
        if (error != nullptr)
            throw std::runtime_error(error->message);
    }

private:
    GError *error = nullptr;
};

std::string text(const char *value)
{
    if (value == nullptr)
        throw std::runtime_error("no text");
    return answerOf(std::string_view{value});
}

template <class Node>
Node *as(ArvGcNode *node, GType type)
{
    if (!G_TYPE_CHECK_INSTANCE_TYPE(node, type))
        throw std::runtime_error(std::string{"a "} + G_OBJECT_TYPE_NAME(node));
    return reinterpret_cast<Node *>(node);
}

ArvGcInteger *asInteger(ArvGcNode *node)
{
    return as<ArvGcInteger>(node, ARV_TYPE_GC_INTEGER);
}

ArvGcFloat *asFloat(ArvGcNode *node)
{
    return as<ArvGcFloat>(node, ARV_TYPE_GC_FLOAT);
}

ArvGcEnumeration *asEnumeration(ArvGcNode *node)
{
    return as<ArvGcEnumeration>(node, ARV_TYPE_GC_ENUMERATION);
}

std::string get(ArvGcNode *node, const std::string &kind)
{
    Call call;
    GError **const error = call.out();
    if (kind == "integer")
        return answerOf(std::int64_t{call.checked(arv_gc_integer_get_value(asInteger(node), error))});
    if (kind == "float")
        return answerOf(call.checked(arv_gc_float_get_value(asFloat(node), error)));
    if (kind == "boolean") {
        auto *const boolean = as<ArvGcBoolean>(node, ARV_TYPE_GC_BOOLEAN);
        return answerOf(call.checked(arv_gc_boolean_get_value(boolean, error)) != FALSE);
    }
    if (kind == "string") {
        auto *const string = as<ArvGcString>(node, ARV_TYPE_GC_STRING);
        return text(call.checked(arv_gc_string_get_value(string, error)));
    }
    if (kind == "enumeration")
        return answerOf(
                   std::int64_t{call.checked(arv_gc_enumeration_get_int_value(asEnumeration(node), error))}) +
               " " + text(call.checked(arv_gc_enumeration_get_string_value(asEnumeration(node), error)));
    auto *const bytes = as<ArvGcRegister>(node, ARV_TYPE_GC_REGISTER);
    std::string all(call.checked(arv_gc_register_get_length(bytes, error)), '\0');
    arv_gc_register_get(bytes, all.data(), all.size(), error);
    return call.checked(answerOf(std::string_view{all}));
}

std::string bound(ArvGcNode *node, const Question &question)
{
    Call call;
    GError **const error = call.out();
    if (question.kind == "float") {
        const auto ask = question.action == "min" ? arv_gc_float_get_min : arv_gc_float_get_max;
        return answerOf(call.checked(ask(asFloat(node), error)));
    }
    const auto ask = question.action == "min"   ? arv_gc_integer_get_min
                     : question.action == "max" ? arv_gc_integer_get_max
                                                : arv_gc_integer_get_inc;
    return answerOf(std::int64_t{call.checked(ask(asInteger(node), error))});
}

void set(ArvGcNode *node, const Question &question)
{
    Call call;
    const char *const value = question.value.c_str();
    if (question.kind == "integer")
        arv_gc_integer_set_value(asInteger(node), std::strtoll(value, nullptr, 10), call.out());
    else if (question.kind == "float")
        arv_gc_float_set_value(asFloat(node), std::strtod(value, nullptr), call.out());
    else if (question.kind == "boolean")
        arv_gc_boolean_set_value(as<ArvGcBoolean>(node, ARV_TYPE_GC_BOOLEAN), question.value == "true",
                                 call.out());
    else if (question.kind == "string")
        arv_gc_string_set_value(as<ArvGcString>(node, ARV_TYPE_GC_STRING), value, call.out());
    else if (question.kind == "enumeration")
        arv_gc_enumeration_set_string_value(asEnumeration(node), value, call.out());
    else
        arv_gc_command_execute(as<ArvGcCommand>(node, ARV_TYPE_GC_COMMAND), call.out());
    call.check();
}

/// The library leaves it to its callers to put these together.
std::string mode(ArvGcNode *node)
{
    auto *const feature = as<ArvGcFeatureNode>(node, ARV_TYPE_GC_FEATURE_NODE);
    Call call;
    if (call.checked(arv_gc_feature_node_is_implemented(feature, call.out())) == FALSE)
        return "NI";
    if (call.checked(arv_gc_feature_node_is_available(feature, call.out())) == FALSE)
        return "NA";
    const char *const name =
        arv_gc_access_mode_to_string(arv_gc_feature_node_get_actual_access_mode(feature));
    const std::string unlocked = name != nullptr ? name : "none";
    if (call.checked(arv_gc_feature_node_is_locked(feature, call.out())) == FALSE || unlocked == "RO")
        return unlocked;
    return unlocked == "RW" ? "RO" : "NA";
}

std::string answer(ArvGc *nodes, const Question &question, Memory &memory)
{
    ArvGcNode *const node = arv_gc_get_node(nodes, question.node.c_str());
    if (node == nullptr)
        return std::string{refusal} + ": no such node";
    try {
        const std::string accessMode = mode(node);
        if (question.action == "mode")
            return "mode " + accessMode;
        const bool isGet = question.action == "get";
        if (!isGet && question.action != "set")
            return bound(node, question);
        if (accessMode == "NI" || accessMode == "NA" || accessMode == (isGet ? "WO" : "RO"))
            return std::string{refusal} + ": " + accessMode;
        if (isGet)
            return get(node, question.kind);
        const Memory before = memory;
        set(node, question);
        const std::string answer = answerOfWrite(before, memory);
        memory = before;
        return answer;
    } catch (const std::runtime_error &failure) {
        return std::string{refusal} + ": " + failure.what();
    }
}

} // namespace

static void oracle_device_init(OracleDevice *) {}

static void oracle_device_class_init(OracleDeviceClass *type)
{
    type->parent.read_memory = readMemory;
    type->parent.write_memory = writeMemory;
    type->parent.read_register = readRegister;
    type->parent.write_register = writeRegister;
}

int main()
{
    alarm(timeLimitSeconds);
    Questionnaire asked = readQuestionnaire(std::cin);
    auto *const device =
        oracleDevice(static_cast<ArvDevice *>(g_object_new(oracle_device_get_type(), nullptr)));
    device->memory = &asked.memory;
    ArvGc *const nodes = arv_gc_new(&device->parent, asked.description.data(), asked.description.size());
    if (nodes == nullptr)
        return EXIT_FAILURE;
    arv_gc_set_access_check_policy(nodes, ARV_ACCESS_CHECK_POLICY_ENABLE);
    arv_gc_set_range_check_policy(nodes, ARV_RANGE_CHECK_POLICY_ENABLE);
    for (const Question &question : asked.questions)
        std::cout << answer(nodes, question, asked.memory) << std::endl;
    return EXIT_SUCCESS;
}
