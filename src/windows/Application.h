#pragma once

#include "KeyRepeat.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

#include <vector>

/// The application object of the windows; every event passes here before any filter sees it.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    /// Key repeats end here: the bridge to assistive technologies takes key events away and brings
    /// back copies without their time. A key that comes for a window that is closed already goes to
    /// the open one that was active last.
    bool notify(QObject *receiver, QEvent *event) override;

private:
    void noteActive(QObject *receiver);
    [[nodiscard]] QObject *openReceiver(QObject *receiver) const;

    KeyRepeat keyRepeat;
    std::vector<QPointer<QWidget>> lastActive; ///< windows, the one that was active last at the end
};
