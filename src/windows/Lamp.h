#pragma once

#include <QWidget>

/// A small round lamp: solid when lit, a hollow outline when not. Its accessible description is
/// "lit" or "unlit".
class Lamp : public QWidget {
public:
    explicit Lamp(QWidget *parent = nullptr);

    void setLit(bool on);
    [[nodiscard]] bool isLit() const { return lit; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool lit = false;
};
