#pragma once

#include "link/LinkStatusView.h"

#include <QLabel>

#include <functional>

/// The status label and the two link pictures of a window.
class LinkStatusWidgets : public LinkStatusView {
public:
    /// Makes the three as children of `parent`, named `ZarnConnectedLabel`, `ZarnConnectedImage`
    /// and `ZarnNotConnectedImage`; the window places them.
    explicit LinkStatusWidgets(QWidget *parent);

    void showLinkStatus(const LinkStatusLook &look) override;
    [[nodiscard]] bool showsLinkUp() const;

    /// Called after the look has changed; the window may have more to show or to lay out.
    std::function<void()> changed = [] {};

    QLabel *ZarnConnectedLabel;
    QWidget *ZarnConnectedImage;
    QWidget *ZarnNotConnectedImage;
};
