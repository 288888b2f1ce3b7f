#pragma once

#include <optional>
#include <string>

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
    bool operator==(const Rgb &) const = default;
};

/// How a window is to show the link.
struct LinkStatusLook {
    std::string caption;
    std::optional<Rgb> background; ///< none: the platform's button face
    bool linkUp = false;           ///< which of the two pictures is shown
    bool showLabel = false;        ///< make a hidden label visible too
};

/// A window with a status label and the two link pictures.
class LinkStatusView {
public:
    LinkStatusView() = default;
    LinkStatusView(const LinkStatusView &) = delete;
    LinkStatusView &operator=(const LinkStatusView &) = delete;
    virtual ~LinkStatusView() = default;

    virtual void showLinkStatus(const LinkStatusLook &look) = 0;
};

/// The connection dialog's line on the progress of a network connect.
class ConnectProgressView {
public:
    ConnectProgressView() = default;
    ConnectProgressView(const ConnectProgressView &) = delete;
    ConnectProgressView &operator=(const ConnectProgressView &) = delete;
    virtual ~ConnectProgressView() = default;

    virtual void showConnectProgress(const std::string &text) = 0;
};
