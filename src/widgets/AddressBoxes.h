#pragma once

#include "link/AddressEntry.h"

#include <QLineEdit>
#include <QWidget>

#include <array>
#include <string>

/// Four boxes for the numbers of an IP address, with dots between them.
class AddressBoxes : public QWidget {
public:
    /// @param addressQuads 0 to 3 take the numbers
    /// @param boxName object name of the boxes, "_0" to "_3" appended
    /// @param dotName object name of the dots, "_0" to "_2" appended
    AddressBoxes(const char *boxName, const char *dotName, std::array<std::string, 5> &addressQuads,
                 QWidget *parent);

    /// Puts texts into the boxes without storing them.
    void fill(const std::array<std::string, 5> &texts);
    /// Empties the boxes; the address stays.
    void clear();
    [[nodiscard]] QLineEdit *box(int number) const {
        return boxes.at(static_cast<std::size_t>(number));
    }

    /// Selects the number of a box, so that the next digit replaces it.
    void goTo(int number) { show(entry.whole(number)); }

    AddressEntry entry;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void change(int number);
    void showTexts();
    void show(const AddressEntry::Place &place);
    void noteSelection(int number);

    std::array<QLineEdit *, 4> boxes{};
    std::array<AddressEntry::Place, 4> selections; ///< before the event that is under way
};
