#pragma once

#include <QComboBox>

/// A list that drops down. The arrow keys open it and choose nothing while it is closed; Esc closes
/// it and nothing else.
class PortList : public QComboBox {
public:
    explicit PortList(QWidget *parent);

    /// Opens the list at its choice, at first at its first entry.
    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
};
