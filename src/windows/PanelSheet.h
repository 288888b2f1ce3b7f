#pragma once

#include <QWidget>

/// The ground that the panel's controls stand on: one card for the inputs, one for the outputs.
class PanelSheet : public QWidget {
public:
    explicit PanelSheet(QWidget *parent) : QWidget(parent) {}

protected:
    void paintEvent(QPaintEvent *event) override;
};
