#pragma once

#include "Lamp.h"
#include "panel/PanelControls.h"
#include "support/ProgramFixture.h"

#include <QComboBox>
#include <QListWidget>
#include <QRegularExpression>
#include <QTextDocumentFragment>

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

// clang-format off
/// The names of controls and where they are.
#define LISTED(...) #__VA_ARGS__, {__VA_ARGS__}
// clang-format on

/// All controls of all views.
inline std::vector<NamedControl> controlsOf(Views &views) {
    auto &[main, messages, c, u, panel, presets, setup, about, help] = views;
    std::vector<NamedControl> all;
    const auto add = [&all](const char *window, const char *names,
                            const std::vector<Control *> &controls) {
        static const QRegularExpression notOfTheName(QStringLiteral("&\\w+.|\\.control|\\]"));
        QStringList words = QString::fromLatin1(names)
                                .remove(notOfTheName)
                                .replace(u'[', u'_')
                                .split(QStringLiteral(", "));
        for (Control *control : controls)
            all.push_back({window, words.takeFirst().toStdString(), control});
    };
    const auto addRow = [&all](const char *window, const char *name, auto &row) {
        for (int slot = 1; slot <= row.last(); ++slot)
            all.push_back({window, name + ("_" + std::to_string(slot)), &row[slot]});
    };
    // clang-format off
    add("frmMain", LISTED(&main.MainControlButton_0, &main.MainControlButton_2, &main.ToDisconnectPortLabel));
    add("dlgConnect", LISTED(&c.Frame1, &c.ConnectIPOption, &c.ConnectSerialOption, &c.IPAddressFrame,
        &c.Connect2IPButton, &c.Label2, &c.SerialConnectionFrame, &c.Label1, &c.SerialPortsCombo.control,
        &c.Connect2SerialButton));
    add("dlgControlExisting", LISTED(&u.OptionsFrame, &u.OptionsCommand[0], &u.OptionsCommand[1],
        &u.OptionsCommand[2], &u.OptionsCommand[3], &u.OKButton, &u.AddCorvaneFrame, &u.Label2_0, &u.Label2_1,
        &u.Text3, &u.AvailCorvanesList.control, &u.Label3, &u.ConnectChoiceList.control, &u.ControlledbyText,
        &u.IPAddressFrame, &u.AddCorvaneCommand, &u.CancelCommand, &u.StatusLabel));
    add("dlgPresets", LISTED(&presets.ExecutePresetButton, &presets.ExitPresets));
    #undef LISTED
    // clang-format on
    addRow("dlgPresets", "NewPresetButton", presets.NewPresetButton);
    for (const SingleControl &single : SingleControls)
        all.push_back({"KVN32x32Audio", single.name, &(panel.*single.control)});
    for (const SlotArray &array : SlotArrays)
        addRow("KVN32x32Audio", array.name, panel.*array.controls);
    return all;
}

/// What the pointer shows at a widget, and what is spoken of it.
inline std::string hints(const QWidget *widget) {
    return QTextDocumentFragment::fromHtml(widget->toolTip())
               .toPlainText()
               .remove(QChar(0x200B))
               .toStdString() +
           "/" + widget->accessibleDescription().toStdString();
}

/// The entries of a list, the chosen one in brackets, or the marked one of a list dropped down.
inline std::string entries(QWidget *widget) {
    const auto *combo = qobject_cast<QComboBox *>(widget);
    const auto *list = combo ? combo->view() : qobject_cast<QAbstractItemView *>(widget);
    const QAbstractItemModel *model = list->model();
    const bool none = !list->selectionModel()->hasSelection();
    const int marked = none ? -1 : list->currentIndex().row();
    const int chosen = combo && !list->isVisible() ? combo->currentIndex() : marked;
    std::string all;
    for (int row = 0; row < model->rowCount(); ++row) {
        const std::string text = model->index(row, 0).data().toString().toStdString();
        all += row == chosen ? "[" + text + "]" : " " + text + " ";
    }
    return all;
}

/// The address in a window's boxes: a star where the focus is, in brackets what is selected.
inline std::string addressIn(const std::string &window) {
    std::string all;
    for (const auto *box : ProgramFixture::window(window)->findChildren<QLineEdit *>(
             QRegularExpression(QStringLiteral("Quad.*_[0-3]")))) {
        QString text = box->text();
        if (box->hasSelectedText())
            text.insert(box->selectionEnd(), u']').insert(box->selectionStart(), u'[');
        all += (box->objectName().endsWith(u'0') ? "" : ".") + text.toStdString();
        all += box->window()->focusWidget() == box ? "*" : "";
        const QWidget *row = box->parentWidget();
        if (row->isVisible() && !row->parentWidget()->contentsRect().contains(row->geometry()))
            all += " out of its frame";
    }
    return all;
}
