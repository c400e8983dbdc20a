// kestrelctl ports: the serial devices of this computer, and why one cannot be opened.
#include "ctl/context.h"
#include "ctl/words.h"
#include "platform/errors.h"
#include "platform/platform.h"

namespace kestrel::ctl {

int listPorts(Context& context) {
    const std::vector<Device> devices = context.devices();
    bool isWell = !devices.empty();
    if (devices.empty()) context.out.remark(say(Word::NoDevices));
    for (const Device& device : devices) {
        std::string trouble;
        try {
            context.use(device.path);
            platform().makeSerialControl()->PortOpen(true);
        } catch (const RunTimeError& error) {
            trouble = error.what();
            isWell = false;
        }
        const std::string about = device.about.empty() ? device.driver : device.about + ", " + device.driver;
        const std::string state = trouble.empty() ? say(Word::CanBeOpened) : trouble.substr(device.path.size() + 2);
        context.out.result(device.path + " (" + about + "): " + state,
                           {{"device", device.path},
                            {"about", device.about},
                            {"driver", device.driver},
                            {"usb", device.isUsb},
                            {"trouble", trouble.empty() ? FieldValue(nullptr) : FieldValue(trouble)}});
    }
    return isWell ? status::Well : status::Differs;
}

}  // namespace kestrel::ctl
