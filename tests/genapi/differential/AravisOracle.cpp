// SPDX-License-Identifier: MIT
// aravis_oracle: answers a questionnaire from standard input by the Aravis library, one line for each question.
// A program of its own, since some descriptions end the process of that library.
#include "Questionnaire.h"

#include <arv.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <stdexcept>

/// A device that is the memory of the questionnaire.
struct OracleDevice
{
    ArvDevice parent;
};

struct OracleDeviceClass
{
    ArvDeviceClass parent;
};

G_DEFINE_TYPE(OracleDevice, oracle_device, ARV_TYPE_DEVICE)

namespace {

constexpr unsigned timeLimitSeconds = 20; ///< for one questionnaire; most take a hundredth of one

Memory memory;

gboolean succeed(bool hasAddress, GError **error)
{
    if (!hasAddress)
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS,
                    "no such address");
    return hasAddress ? TRUE : FALSE;
}

gboolean readMemory(ArvDevice *, guint64 address, guint32 size, void *buffer, GError **error)
{
    return succeed(load(memory, address, size, buffer), error);
}

gboolean writeMemory(ArvDevice *, guint64 address, guint32 size, void *buffer, GError **error)
{
    return succeed(store(memory, address, size, buffer), error);
}

void check(GError *error)
{
    if (error == nullptr)
        return;
    const std::runtime_error failure{error->message};
    g_error_free(error);
    throw failure;
}

/// Calls \p function, which takes a place for an error behind its other arguments.
template <class Function, class... Arguments>
auto call(Function function, Arguments... arguments)
{
    GError *error = nullptr;
    if constexpr (std::is_void_v<std::invoke_result_t<Function, Arguments..., GError **>>) {
        function(arguments..., &error);
        check(error);
    } else {
        const auto result = function(arguments..., &error);
        check(error);
        return result;
    }
}

std::string answerOfText(const char *text)
{
    return text != nullptr ? answerOf(std::string_view{text}) : throw std::runtime_error("no text");
}

/// An enumeration is an integer and a text as well, so it is asked first.
std::string get(ArvGcNode *node)
{
    if (ARV_IS_GC_ENUMERATION(node)) {
        auto *const enumeration = ARV_GC_ENUMERATION(node);
        return answerOf(std::int64_t{call(arv_gc_enumeration_get_int_value, enumeration)}) + " " +
               answerOfText(call(arv_gc_enumeration_get_string_value, enumeration));
    }
    if (ARV_IS_GC_BOOLEAN(node))
        return answerOf(call(arv_gc_boolean_get_value, ARV_GC_BOOLEAN(node)) != FALSE);
    if (ARV_IS_GC_INTEGER(node))
        return answerOf(std::int64_t{call(arv_gc_integer_get_value, ARV_GC_INTEGER(node))});
    if (ARV_IS_GC_FLOAT(node))
        return answerOf(call(arv_gc_float_get_value, ARV_GC_FLOAT(node)));
    if (ARV_IS_GC_STRING(node))
        return answerOfText(call(arv_gc_string_get_value, ARV_GC_STRING(node)));
    if (!ARV_IS_GC_REGISTER(node))
        throw std::runtime_error("a node without a value");
    auto *const bytes = ARV_GC_REGISTER(node);
    std::string all(call(arv_gc_register_get_length, bytes), '\0');
    call(arv_gc_register_get, bytes, all.data(), all.size());
    return answerOf(std::string_view{all});
}

std::string bound(ArvGcNode *node, const std::string &which)
{
    if (ARV_IS_GC_INTEGER(node))
        return answerOf(std::int64_t{call(which == "min"   ? arv_gc_integer_get_min
                                          : which == "max" ? arv_gc_integer_get_max
                                                           : arv_gc_integer_get_inc,
                                          ARV_GC_INTEGER(node))});
    return answerOf(call(which == "min"   ? arv_gc_float_get_min
                         : which == "max" ? arv_gc_float_get_max
                                          : arv_gc_float_get_inc,
                         ARV_GC_FLOAT(node)));
}

void set(ArvGcNode *node, const std::string &text)
{
    const char *const value = text.c_str();
    if (ARV_IS_GC_ENUMERATION(node))
        call(arv_gc_enumeration_set_string_value, ARV_GC_ENUMERATION(node), value);
    else if (ARV_IS_GC_BOOLEAN(node))
        call(arv_gc_boolean_set_value, ARV_GC_BOOLEAN(node), text == "true");
    else if (ARV_IS_GC_INTEGER(node))
        call(arv_gc_integer_set_value, ARV_GC_INTEGER(node), std::strtoll(value, nullptr, 10));
    else if (ARV_IS_GC_FLOAT(node))
        call(arv_gc_float_set_value, ARV_GC_FLOAT(node), std::strtod(value, nullptr));
    else if (ARV_IS_GC_STRING(node))
        call(arv_gc_string_set_value, ARV_GC_STRING(node), value);
    else if (ARV_IS_GC_COMMAND(node))
        call(arv_gc_command_execute, ARV_GC_COMMAND(node));
    else
        throw std::runtime_error("a node that can't be written");
}

/// The library leaves it to its callers to put these together.
std::string mode(ArvGcNode *node)
{
    if (!ARV_IS_GC_FEATURE_NODE(node))
        throw std::runtime_error("a node without a mode");
    auto *const feature = ARV_GC_FEATURE_NODE(node);
    if (call(arv_gc_feature_node_is_implemented, feature) == FALSE)
        return "NI";
    if (call(arv_gc_feature_node_is_available, feature) == FALSE)
        return "NA";
    const std::string unlocked =
        arv_gc_access_mode_to_string(arv_gc_feature_node_get_actual_access_mode(feature));
    if (call(arv_gc_feature_node_is_locked, feature) == FALSE || unlocked == "RO")
        return unlocked;
    return unlocked == "RW" ? "RO" : "NA";
}

std::string answer(ArvGcNode *node, const Question &question)
{
    if (node == nullptr)
        throw std::runtime_error("no such node");
    const std::string accessMode = mode(node);
    const bool isGet = question.action == "get";
    if (question.action == "mode")
        return "mode " + accessMode;
    if (!isGet && !question.isWrite())
        return bound(node, question.action);
    if (accessMode == "NI" || accessMode == "NA" || accessMode == (isGet ? "WO" : "RO"))
        throw std::runtime_error(accessMode);
    if (isGet)
        return get(node);
    return answerToWrite(
        question, memory, [&] { set(node, question.value); }, [&] { return get(node); });
}

} // namespace

static void oracle_device_init(OracleDevice *) {}

static void oracle_device_class_init(OracleDeviceClass *type)
{
    type->parent.read_memory = readMemory;
    type->parent.write_memory = writeMemory;
}

/// What a question has written to the memory is taken back behind it.
int main()
{
    alarm(timeLimitSeconds);
    const Questionnaire asked = readQuestionnaire(std::cin);
    memory = asked.memory;
    auto *const device = static_cast<ArvDevice *>(g_object_new(oracle_device_get_type(), nullptr));
    ArvGc *const nodes = arv_gc_new(device, asked.description.data(), asked.description.size());
    if (nodes == nullptr)
        return EXIT_FAILURE;
    arv_gc_set_access_check_policy(nodes, ARV_ACCESS_CHECK_POLICY_ENABLE);
    arv_gc_set_range_check_policy(nodes, ARV_RANGE_CHECK_POLICY_ENABLE);
    for (const Question &question : asked.questions) {
        try {
            std::cout << answer(arv_gc_get_node(nodes, question.node.c_str()), question) << std::endl;
        } catch (const std::runtime_error &failure) {
            std::cout << refusal << ": " << failure.what() << std::endl;
        }
        if (question.isWrite())
            memory = asked.memory;
    }
    return EXIT_SUCCESS;
}
