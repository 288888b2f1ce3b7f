#pragma once

#include "KeyRepeat.h"

#include <QApplication>

/// The application object of the windows; every event passes here before any filter sees it.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    /// Key repeats end here: the bridge to assistive technologies takes key events away and brings
    /// back copies without their time. A key that comes for a window that is closed already goes to
    /// the one in front.
    bool notify(QObject *receiver, QEvent *event) override;

private:
    KeyRepeat keyRepeat;
};
