#include "tests/genicam/AppletDevice.h"

#include "platform/ParameterValues.h"
#include "tests/support/XmlDescription.h"

#include <memory>
#include <string>

namespace kavo::test {

namespace {

/// What the device knows; GObject itself builds and clears plain memory only.
struct Port {
    Fg_Struct* handle;
    int number;
    std::string xml;
    ArvGc* document;
};

struct AppletDevice {
    ArvDevice parent;
    Port* port;
};

struct AppletDeviceClass {
    ArvDeviceClass parent;
};

Port& portOf(void* device) { return *static_cast<AppletDevice*>(device)->port; }

gboolean outcome(int code, const char* access, guint64 address, GError** error) {
    if (code == 0) {
        return TRUE;
    }
    g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_PROTOCOL_ERROR, "%s of %d failed: %d", access,
                static_cast<int>(address), code);
    return FALSE;
}

gboolean readMemory(ArvDevice* device, guint64 address, guint32, void* buffer, GError** error) {
    const Port& port = portOf(device);
    const int code = Fg_getParameterWithType(port.handle, static_cast<int>(address), buffer,
                                             static_cast<unsigned>(port.number), kavo::type::unsigned32);
    return outcome(code, "read", address, error);
}

gboolean writeMemory(ArvDevice* device, guint64 address, guint32, void* buffer, GError** error) {
    const Port& port = portOf(device);
    const int code = Fg_setParameterWithType(port.handle, static_cast<int>(address), buffer,
                                             static_cast<unsigned>(port.number), kavo::type::unsigned32);
    return outcome(code, "write", address, error);
}

gboolean readRegister(ArvDevice* device, guint64 address, guint32* value, GError** error) {
    return readMemory(device, address, sizeof *value, value, error);
}

gboolean writeRegister(ArvDevice* device, guint64 address, guint32 value, GError** error) {
    return writeMemory(device, address, sizeof value, &value, error);
}

ArvGc* document(ArvDevice* device) { return portOf(device).document; }

const char* documentText(ArvDevice* device, size_t* size) {
    const std::string& xml = portOf(device).xml;
    *size = xml.size();
    return xml.c_str();
}

void finalize(GObject* object) {
    const std::unique_ptr<Port> port(&portOf(object));
    if (port->document != nullptr) {
        g_object_unref(port->document);
    }
    G_OBJECT_CLASS(g_type_class_peek(ARV_TYPE_DEVICE))->finalize(object);
}

void initializeClass(void* memory, void*) {
    G_OBJECT_CLASS(memory)->finalize = finalize;
    ArvDeviceClass& device = static_cast<AppletDeviceClass*>(memory)->parent;
    device.get_genicam = document;
    device.get_genicam_xml = documentText;
    device.read_memory = readMemory;
    device.write_memory = writeMemory;
    device.read_register = readRegister;
    device.write_register = writeRegister;
}

GType appletDeviceType() {
    static const GType type =
        g_type_register_static_simple(ARV_TYPE_DEVICE, "AppletDevice", sizeof(AppletDeviceClass),
                                      initializeClass, sizeof(AppletDevice), nullptr, G_TYPE_FLAG_NONE);
    return type;
}

} // namespace

ArvDevice* newAppletDevice(Fg_Struct* handle, int number) {
    auto port = std::make_unique<Port>(Port{handle, number, xmlDescription(handle, number), nullptr});
    void* const device = g_object_new(appletDeviceType(), nullptr);
    port->document = arv_gc_new(static_cast<ArvDevice*>(device), port->xml.data(), port->xml.size());
    static_cast<AppletDevice*>(device)->port = port.release();
    return static_cast<ArvDevice*>(device);
}

} // namespace kavo::test
