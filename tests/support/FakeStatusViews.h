#pragma once

#include "link/LinkStatusDisplay.h"

#include <string>
#include <vector>

/// A window that only takes note of how it is to show the link.
class FakeStatusView final : public LinkStatusView, public ConnectProgressView {
public:
    LinkStatusLook look;
    std::vector<std::string> progress;

    void showLinkStatus(const LinkStatusLook &newLook) override { look = newLook; }
    void showConnectProgress(const std::string &text) override { progress.push_back(text); }
};

/// All four windows that show the link. They must outlive the display.
class FakeStatusViews {
public:
    explicit FakeStatusViews(LinkStatusDisplay &display) {
        for (std::size_t window = 0; window < views.size(); ++window)
            display.attach(static_cast<StatusWindow>(window), views[window]);
        display.attachProgress(views[static_cast<std::size_t>(StatusWindow::Connect)]);
    }

    FakeStatusView &operator[](StatusWindow window) {
        return views.at(static_cast<std::size_t>(window));
    }

    /// The captions of start window, saved-units window, connection dialog and panel.
    [[nodiscard]] std::vector<std::string> captions() const {
        std::vector<std::string> texts;
        for (const FakeStatusView &view : views)
            texts.push_back(view.look.caption);
        return texts;
    }

private:
    std::array<FakeStatusView, 4> views;
};
