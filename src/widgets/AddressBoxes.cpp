#include "widgets/AddressBoxes.h"

#include "widgets/TextConversion.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>

#include <algorithm>

AddressBoxes::AddressBoxes(const char *boxName, const char *dotName,
                           std::array<std::string, 5> &addressQuads, QWidget *parent)
    : QWidget(parent), entry(addressQuads) {
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    for (int number = 0; number < 4; ++number) {
        auto *edit = new QLineEdit(this);
        edit->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(boxName)).arg(number));
        edit->setAccessibleName(QStringLiteral("Address part %1").arg(number + 1));
        edit->setAlignment(Qt::AlignCenter);
        edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 14);
        edit->setInputMethodHints(Qt::ImhDigitsOnly);
        edit->installEventFilter(this);
        connect(edit, &QLineEdit::textChanged, this, [this, number] { change(number); });
        boxes.at(static_cast<std::size_t>(number)) = edit;
        noteSelection(number);
        if (number > 0) {
            auto *dot = new QLabel(QStringLiteral("."), this);
            dot->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(dotName)).arg(number - 1));
            row->addWidget(dot);
        }
        row->addWidget(edit);
    }
    row->addStretch();
}

void AddressBoxes::fill(const std::array<std::string, 5> &texts) {
    entry.fill(texts);
    showTexts();
}

void AddressBoxes::clear() { fill({}); }

bool AddressBoxes::eventFilter(QObject *watched, QEvent *event) {
    const auto found = std::find(boxes.begin(), boxes.end(), watched);
    if (found == boxes.end())
        return QWidget::eventFilter(watched, event);
    const int number = static_cast<int>(found - boxes.begin());
    noteSelection(number);
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Backspace) {
        if (const auto place = entry.back(number)) {
            show(*place);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void AddressBoxes::change(int number) {
    const std::string now = typed(box(number)->text());
    if (now == entry.text(number))
        return;
    const auto place = entry.change(selections.at(static_cast<std::size_t>(number)), now);
    showTexts();
    if (place)
        show(*place);
}

void AddressBoxes::showTexts() {
    for (int number = 0; number < AddressEntry::BoxCount; ++number) {
        const QSignalBlocker silent(box(number));
        const QString text = shown(entry.text(number));
        if (box(number)->text() != text)
            box(number)->setText(text);
        noteSelection(number);
    }
}

void AddressBoxes::show(const AddressEntry::Place &place) {
    QLineEdit *target = box(place.box);
    target->setFocus();
    if (place.from == place.to)
        target->setCursorPosition(place.from);
    else
        target->setSelection(place.from, place.to - place.from);
    noteSelection(place.box);
}

void AddressBoxes::noteSelection(int number) {
    const QLineEdit *edit = box(number);
    const bool selected = edit->hasSelectedText();
    selections.at(static_cast<std::size_t>(number)) = {
        number, selected ? edit->selectionStart() : edit->cursorPosition(),
        selected ? edit->selectionEnd() : edit->cursorPosition()};
}
