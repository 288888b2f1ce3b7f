#pragma once

#include "AddressBoxes.h"
#include "Window.h"
#include "units/dlgControlExisting.h"

#include <QListWidget>

/// The window of `dlgControlExisting`.
class UnitsWindow : public Window {
public:
    UnitsWindow(dlgControlExisting &unitsForm, const UnitsView &unitsView);

protected:
    void refreshRest() override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using PickRow = void (dlgControlExisting::*)(int row);

    QGroupBox *buildOptions();
    QGroupBox *buildWorkArea();
    QGroupBox *buildAddress(QWidget *parent);
    QListWidget *buildList(const char *name, const QString &spoken, const ListControl &control,
                           PickRow picked, QWidget *parent);

    dlgControlExisting &dialog;
    const UnitsView &view;
    QListWidget *AvailCorvanesList = nullptr;
    QListWidget *ConnectChoiceList = nullptr;
    AddressBoxes *address = nullptr;
    ListControl shownUnits;
    ListControl shownKinds;
};
