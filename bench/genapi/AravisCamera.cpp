// SPDX-License-Identifier: MIT
// See the header.
#include "AravisCamera.h"

#include "GeneratedCamera.h"

#include <arv.h>

#include <cstdlib>
#include <iostream>

struct BenchDevice
{
    ArvDevice parent;
};

struct BenchDeviceClass
{
    ArvDeviceClass parent;
};

G_DEFINE_TYPE(BenchDevice, bench_device, ARV_TYPE_DEVICE)

namespace {

gboolean readMemory(ArvDevice *, guint64 address, guint32 size, void *buffer, GError **)
{
    readRegisters(address, buffer, size);
    return TRUE;
}

[[noreturn]] void end(const char *fault)
{
    std::cerr << "Aravis: " << fault << "\n";
    std::exit(EXIT_FAILURE);
}

} // namespace

static void bench_device_init(BenchDevice *) {}

static void bench_device_class_init(BenchDeviceClass *type)
{
    type->parent.read_memory = readMemory;
}

struct AravisCamera::Objects
{
    ArvDevice *device = static_cast<ArvDevice *>(g_object_new(bench_device_get_type(), nullptr));
    ArvGc *nodes = nullptr;

    ~Objects()
    {
        g_clear_object(&nodes);
        g_object_unref(device);
    }
};

AravisCamera::AravisCamera(const std::string &description) : objects{std::make_unique<Objects>()}
{
    objects->nodes = arv_gc_new(objects->device, description.data(), description.size());
    if (objects->nodes == nullptr)
        end("the description can't be loaded");
    arv_gc_set_register_cache_policy(objects->nodes, ARV_REGISTER_CACHE_POLICY_ENABLE);
}

AravisCamera::~AravisCamera() = default;

bool AravisCamera::hasNode(const std::string &name) const
{
    return arv_gc_get_node(objects->nodes, name.c_str()) != nullptr;
}

std::int64_t AravisCamera::integer(const std::string &name) const
{
    GError *error = nullptr;
    const std::int64_t value =
        arv_gc_integer_get_value(ARV_GC_INTEGER(arv_gc_get_node(objects->nodes, name.c_str())), &error);
    if (error != nullptr)
        end(error->message);
    return value;
}
