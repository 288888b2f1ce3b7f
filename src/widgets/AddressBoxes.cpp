#include "widgets/AddressBoxes.h"

#include "protocol/Text.h"
#include "widgets/TextConversion.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

#include <algorithm>

namespace {
constexpr int BoxCharacters = 3;
constexpr double HighestNumber = 255.0;
} // namespace

AddressBoxes::AddressBoxes(const char *boxName, const char *dotName,
                           std::array<std::string, 5> &addressQuads, QWidget *parent)
    : QWidget(parent), quads(addressQuads) {
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    for (int number = 0; number < 4; ++number) {
        auto *edit = new QLineEdit(this);
        edit->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(boxName)).arg(number));
        edit->setAccessibleName(QStringLiteral("Address part %1").arg(number + 1));
        edit->setMaxLength(BoxCharacters);
        edit->setAlignment(Qt::AlignCenter);
        edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 14);
        connect(edit, &QLineEdit::textChanged, this, [this, number] { change(number); });
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

void AddressBoxes::fill(const std::array<std::string, 5> &texts) {
    for (std::size_t number = 0; number < boxes.size(); ++number) {
        const QSignalBlocker silent(boxes.at(number));
        const QString text = shown(texts.at(number));
        // Numbers from a file may be padded with blanks, which are kept.
        boxes.at(number)->setMaxLength(std::max(BoxCharacters, static_cast<int>(text.size())));
        boxes.at(number)->setText(text);
    }
}

void AddressBoxes::clear() { fill({}); }

void AddressBoxes::change(int number) {
    if (!accepts())
        return;
    const auto index = static_cast<std::size_t>(number);
    const double value = leadingNumber(typed(boxes.at(index)->text()));
    if (boxes.at(index)->text().size() <= BoxCharacters)
        boxes.at(index)->setMaxLength(BoxCharacters);
    if (value < 0.0 || value > HighestNumber) {
        boxes.at(index)->clear();
        quads.at(index).clear();
        return;
    }
    quads.at(index) = decimalText(value);
    moveOnWhenFull(number);
}

void AddressBoxes::moveOnWhenFull(int number) {
    if (number != 3 && box(number)->text().size() == BoxCharacters)
        box(number + 1)->setFocus();
}
