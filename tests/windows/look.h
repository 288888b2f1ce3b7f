#pragma once

#include "Lamp.h"
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
