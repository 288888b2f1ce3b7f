#pragma once

#include <string>

/// The symbolic link by which peers find a pty. Owns the link and removes it in the end, unless
/// somebody has pointed it elsewhere.
class PtyLink {
public:
    PtyLink() = default;
    PtyLink(const PtyLink &) = delete;
    PtyLink &operator=(const PtyLink &) = delete;
    ~PtyLink() { remove(); }

    /// Makes the link at `linkPath`, and its folder where there is none. What stands there already
    /// is replaced only if it is a link that leads nowhere or to a pty.
    /// @returns what went wrong, empty if nothing did
    std::string make(const std::string &linkPath, const std::string &pty);

    void remove();

private:
    std::string path; // empty: there is no link
    std::string target;
};
