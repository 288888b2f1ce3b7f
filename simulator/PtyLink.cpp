#include "simulator/PtyLink.h"

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view PtyFolder = "/dev/pts/";

// Numbers of ptys are used again: the link of a simulator that died may lead to a stranger's.
bool replaceable(const fs::path &link) {
    std::error_code error;
    if (!fs::is_symlink(fs::symlink_status(link, error)))
        return false;
    return !fs::exists(link, error) ||
           fs::read_symlink(link, error).string().starts_with(PtyFolder);
}

} // namespace

std::string PtyLink::make(const std::string &linkPath, const std::string &pty) {
    remove();
    const fs::path link(linkPath);
    std::error_code error;
    if (link.has_parent_path())
        fs::create_directories(link.parent_path(), error);
    if (error)
        return error.message();
    if (fs::exists(fs::symlink_status(link, error))) {
        if (!replaceable(link))
            return "something other than a link to a terminal is there";
        if (!fs::remove(link, error) && error)
            return error.message();
    }
    fs::create_symlink(pty, link, error);
    if (error)
        return error.message();
    // Stays right should the working folder change.
    path = fs::absolute(link).string();
    target = pty;
    return {};
}

void PtyLink::remove() {
    if (path.empty())
        return;
    std::error_code error;
    if (fs::read_symlink(path, error) == target && !error)
        fs::remove(path, error);
    path.clear();
}
