#pragma once

#include "Lamp.h"
#include "panel/PanelControls.h"
#include "support/ProgramFixture.h"

#include <QComboBox>
#include <QListWidget>
#include <QRegularExpression>

#include <string>

// What the user's eyes find in a window, as text.

/// The colour of one pixel of a widget, as "#rrggbb".
inline std::string pixel(QWidget *widget, int x, int y) {
    const QImage image = widget->grab(QRect(x, y, 1, 1)).toImage();
    return image.pixelColor(0, 0).name().toStdString();
}

/// What a control looks like: its text, hidden, greyed, and of buttons and lamps the colour.
inline std::string look(QWidget *widget) {
    const char *const content = widget->inherits("QGroupBox") ? "title" : "text";
    std::string all = widget->property(content).toString().toStdString();
    if (const auto *label = qobject_cast<QLabel *>(widget))
        all += label->textFormat() == Qt::PlainText ? "" : " rich";
    all += widget->isHidden() ? " hidden" : "";
    all += widget->isEnabledTo(widget->parentWidget()) ? "" : " greyed";
    if (widget->inherits("QRadioButton"))
        all += widget->property("checked").toBool() ? " lit" : "";
    else if (widget->inherits("QPushButton") && widget->isEnabled() && widget->isVisible())
        all += " " + pixel(widget, widget->width() / 2, 3);
    else if (dynamic_cast<Lamp *>(widget))
        all += pixel(widget, widget->width() / 2, widget->height() / 2) == "#14963c" ? " lit" : "";
    return all;
}

/// What a control should look like, in the words of look().
inline std::string wanted(const QWidget *widget, const Control &control) {
    static constexpr const char *Faces[] = {" #e0e0e0", " #ff8080", " #d6f1c2", " #f7a69d",
                                            " #d6f1c2"};
    const bool hasText = widget->property("text").isValid() || widget->inherits("QGroupBox");
    std::string all = hasText ? QString::fromLatin1(control.text).toStdString() : "";
    all += control.visible ? "" : " hidden";
    all += control.enabled ? "" : " greyed";
    if (widget->inherits("QPushButton"))
        all += widget->isEnabled() && widget->isVisible() ? Faces[int(control.face)] : "";
    else if (widget->inherits("QRadioButton") || dynamic_cast<const Lamp *>(widget))
        all += control.lit ? " lit" : "";
    return all;
}

/// A control of a view, by the names of its window and of its own.
struct NamedControl {
    std::string window;
    std::string name;
    Control *control;
};

/// All controls of all views.
inline std::vector<NamedControl> controlsOf(Views &views) {
    auto &[main, messages, c, u, panel, presets, setup, about, help] = views;
    // clang-format off
    constexpr const char *Units = "dlgControlExisting";
    #define OF(window, view, name) {window, #name, &(view).name}
    std::vector<NamedControl> all{
        OF("frmMain", main, MainControlButton_0), OF("frmMain", main, MainControlButton_2),
        OF("frmMain", main, ToDisconnectPortLabel), OF("dlgConnect", c, Frame1), OF("dlgConnect", c, ConnectIPOption),
        OF("dlgConnect", c, ConnectSerialOption), OF("dlgConnect", c, IPAddressFrame), OF("dlgConnect", c, Label1),
        OF("dlgConnect", c, Connect2IPButton), OF("dlgConnect", c, Label2), OF("dlgConnect", c, SerialConnectionFrame),
        OF("dlgConnect", c, Connect2SerialButton), {"dlgConnect", "SerialPortsCombo", &c.SerialPortsCombo.control},
        OF(Units, u, OptionsFrame), OF(Units, u, OKButton), OF(Units, u, AddCorvaneFrame), OF(Units, u, Label2_0),
        OF(Units, u, Label2_1), OF(Units, u, Text3), {Units, "AvailCorvanesList", &u.AvailCorvanesList.control},
        OF(Units, u, Label3), OF(Units, u, ControlledbyText), {Units, "ConnectChoiceList", &u.ConnectChoiceList.control},
        OF(Units, u, IPAddressFrame), OF(Units, u, AddCorvaneCommand), OF(Units, u, CancelCommand),
        OF(Units, u, StatusLabel), OF("dlgPresets", presets, ExecutePresetButton), OF("dlgPresets", presets, ExitPresets)};
    #undef OF
    // clang-format on
    for (std::size_t index = 0; index < u.OptionsCommand.size(); ++index)
        all.push_back(
            {Units, "OptionsCommand_" + std::to_string(index), &u.OptionsCommand.at(index)});
    const auto addRow = [&all](const char *window, const std::string &name, auto &row) {
        for (int slot = 1; slot <= row.last(); ++slot)
            all.push_back({window, name + "_" + std::to_string(slot), &row[slot]});
    };
    addRow("dlgPresets", "NewPresetButton", presets.NewPresetButton);
    for (const SingleControl &single : SingleControls)
        all.push_back({"KVN32x32Audio", single.name, &(panel.*single.control)});
    for (const SlotArray &array : SlotArrays)
        addRow("KVN32x32Audio", array.name, panel.*array.controls);
    return all;
}

/// The entries of a list, the chosen one in brackets, or the marked one of a list dropped down.
inline std::string entries(QWidget *widget) {
    const auto *combo = qobject_cast<QComboBox *>(widget);
    const auto *list = combo ? combo->view() : qobject_cast<QAbstractItemView *>(widget);
    const QAbstractItemModel *model = list->model();
    const QModelIndexList marked = list->selectionModel()->selectedIndexes();
    const int chosen = combo && !list->isVisible() ? combo->currentIndex()
                       : marked.empty()            ? -1
                                                   : marked.first().row();
    std::string all;
    for (int row = 0; row < model->rowCount(); ++row) {
        const std::string text = model->index(row, 0).data().toString().toStdString();
        all += row == chosen ? "[" + text + "]" : " " + text + " ";
    }
    return all;
}
