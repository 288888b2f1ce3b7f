#include "AddressBoxes.h"

#include "ProgramLook.h"
#include "TextConversion.h"

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>

#include <algorithm>
#include <utility>

AddressBoxes::AddressBoxes(const char *boxName, const char *dotName, const AddressView &addressView,
                           QWidget *parent)
    : QWidget(parent), view(addressView), shownCursor(addressView.cursorMoved) {
    setAccessibleName(QStringLiteral("Address")); // not once more the name of the frame around it
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(grown(4));
    for (int number = 0; number < AddressEntry::BoxCount; ++number) {
        auto *edit = new QLineEdit(this);
        edit->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(boxName)).arg(number));
        edit->setAccessibleName(QStringLiteral("Address part %1").arg(number + 1));
        edit->setAlignment(Qt::AlignCenter);
        edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("00000")) +
                            grown(14));
        edit->setInputMethodHints(Qt::ImhDigitsOnly);
        edit->installEventFilter(this);
        connect(edit, &QLineEdit::textChanged, this, [this, number](const QString &text) {
            // Not what the view itself put there.
            if (typed(text) != view.boxes.at(static_cast<std::size_t>(number)).text)
                changed(selection.box == number ? selection : AddressPlace{number, 0, 0},
                        typed(text));
        });
        boxes.at(static_cast<std::size_t>(number)) = edit;
        if (number > 0) {
            auto *dot = new QLabel(QStringLiteral("."), this);
            dot->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(dotName)).arg(number - 1));
            row->addWidget(dot);
        }
        row->addWidget(edit);
    }
    row->addStretch();
}

void AddressBoxes::refresh() {
    for (std::size_t number = 0; number < boxes.size(); ++number) {
        const QString text = shown(view.boxes.at(number).text);
        if (boxes.at(number)->text() != text)
            boxes.at(number)->setText(text);
    }
    if (std::exchange(shownCursor, view.cursorMoved) == view.cursorMoved)
        return;
    const AddressPlace &place = view.cursor;
    QLineEdit *target = boxes.at(static_cast<std::size_t>(place.box));
    target->setFocus();
    if (place.from == place.to)
        target->setCursorPosition(place.from);
    else
        target->setSelection(place.from, place.to - place.from);
}

bool AddressBoxes::eventFilter(QObject *watched, QEvent *event) {
    const auto found = std::find(boxes.begin(), boxes.end(), watched);
    if (found == boxes.end())
        return QWidget::eventFilter(watched, event);
    const int number = static_cast<int>(found - boxes.begin());
    noteSelection(number);
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Backspace && (*found)->text().isEmpty()) {
        backspaceInEmpty(number);
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (entered && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)) {
            entered(number);
            return true;
        }
    }
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            left(number);
    }
    return QWidget::eventFilter(watched, event);
}

void AddressBoxes::noteSelection(int number) {
    const QLineEdit *edit = boxes.at(static_cast<std::size_t>(number));
    const bool selected = edit->hasSelectedText();
    selection = {number, selected ? edit->selectionStart() : edit->cursorPosition(),
                 selected ? edit->selectionEnd() : edit->cursorPosition()};
}
