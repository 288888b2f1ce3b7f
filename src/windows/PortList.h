#pragma once

#include <QComboBox>

/// A list that drops down. While it is closed keys open it and mark an entry at most, and the wheel
/// does nothing; while it is open Esc closes it and nothing else.
class PortList : public QComboBox {
public:
    explicit PortList(QWidget *parent);

    /// Opens the list at its choice, at first at its first entry.
    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
};
