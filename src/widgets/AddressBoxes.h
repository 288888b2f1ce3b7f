#pragma once

#include <QLineEdit>
#include <QWidget>

#include <array>
#include <functional>
#include <string>

/// Four boxes for the numbers of an IP address, with dots between them. What is typed goes into the
/// address as it is typed; a number out of range empties its box.
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

    /// A number is stored only while this holds.
    std::function<bool()> accepts = [] { return true; };

private:
    void change(int number);
    void moveOnWhenFull(int number);

    std::array<std::string, 5> &quads;
    std::array<QLineEdit *, 4> boxes{};
};
