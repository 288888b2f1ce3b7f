#pragma once

#include "support/ProgramFixture.h"

#include <QListWidget>
#include <QWindow>
#include <QtTest/QtTest>

// What the user's hands do to the windows, and what the eyes find in their lists and boxes.

inline constexpr const char *Units = "dlgControlExisting";

/// A click that goes the way of the user's mouse, so that a modal dialog can hold it off.
inline void clickOnScreen(QWidget *control, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(control->window()->windowHandle(), button, {},
                      control->mapTo(control->window(), control->rect().center()));
}

/// Leaves a window by "frame", a key, or the name of a button.
inline void leave(const std::string &window, const std::string &way) {
    auto *found = ProgramFixture::window(window);
    if (way == "frame")
        found->close();
    else if (way == "Escape" || way == "Enter")
        QTest::keyClick(found, way == "Enter" ? Qt::Key_Return : Qt::Key_Escape);
    else
        ProgramFixture::click(window.c_str(), way);
}

/// The entries of a list, the chosen one in brackets.
template <class List> std::string entries(const List *list, int chosen) {
    std::string all;
    for (int row = 0; row < list->count(); ++row) {
        const QString text = list->model()->index(row, 0).data().toString();
        all += (row == chosen ? "[" : " ") + text.toStdString() + (row == chosen ? "]" : " ");
    }
    return all;
}

inline std::string listed(const char *name) {
    const auto *list = ProgramFixture::part<QListWidget>(Units, name);
    return entries(list, list->selectedItems().isEmpty() ? -1 : list->currentRow());
}

inline std::string addressIn(const char *window, const std::string &boxes) {
    std::string all;
    for (int box = 0; box < 4; ++box) {
        const auto *edit = ProgramFixture::part<QLineEdit>(window, boxes + std::to_string(box));
        all += (box == 0 ? "" : ".") + edit->text().toStdString() +
               (edit->window()->focusWidget() == edit ? "*" : "");
    }
    return all;
}

inline void type(const char *window, const char *keys) {
    for (const char *key = keys; *key != 0; ++key)
        QTest::keyClick(ProgramFixture::window(window)->focusWidget(), *key);
}

inline void pick(const char *list, int row) {
    auto *widget = ProgramFixture::part<QListWidget>(Units, list);
    const auto *item = widget->item(row);
    QTest::mouseClick(widget->viewport(), Qt::LeftButton, {},
                      item ? widget->visualItemRect(item).center()
                           : widget->viewport()->rect().bottomRight());
}
