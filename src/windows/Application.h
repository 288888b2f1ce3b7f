#pragma once

#include "KeyRepeat.h"

#include <QApplication>

/// The application object of the windows. Key repeats end here, before any filter sees them: the
/// bridge to assistive technologies takes key events away and brings back copies without their
/// time.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override {
        return keyRepeat.swallows(*event) || QApplication::notify(receiver, event);
    }

private:
    KeyRepeat keyRepeat;
};
