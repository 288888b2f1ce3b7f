#include "ComPortNames.h"

#ifdef _WIN32

std::string comPortDevice(const std::string &, int port) { return "COM" + std::to_string(port); }

#else

#include <array>
#include <filesystem>

namespace {

struct DeviceFamily {
    int firstPort;
    const char *path;
};

// From the highest first port down, so that the first one not above a port is its family.
constexpr std::array<DeviceFamily, 3> Families{
    {{13, "/dev/ttyACM"}, {5, "/dev/ttyUSB"}, {1, "/dev/ttyS"}}};

} // namespace

std::string comPortDevice(const std::string &appPath, int port) {
    namespace fs = std::filesystem;
    const fs::path link = fs::path(appPath) / "ports" / ("com" + std::to_string(port));
    std::error_code unreadable;
    if (fs::exists(fs::symlink_status(link, unreadable)))
        return link.string();
    for (const DeviceFamily &family : Families) {
        if (port >= family.firstPort)
            return family.path + std::to_string(port - family.firstPort);
    }
    return {};
}

#endif
