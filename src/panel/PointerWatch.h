#pragma once

#include <QObject>
#include <QPoint>

/// Notes where the pointer was seen last over any window of the program.
class PointerWatch : public QObject {
public:
    PointerWatch();

    /// In global pixels.
    [[nodiscard]] QPoint lastSeen() const { return seenAt; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPoint seenAt;
};
