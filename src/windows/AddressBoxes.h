#pragma once

#include "forms/AddressEntry.h"

#include <QLineEdit>
#include <QWidget>

#include <array>
#include <functional>
#include <string>

/// Four boxes for the numbers of an IP address, with dots between them. They show an address view
/// and tell what is done to them; the view says what comes of it.
class AddressBoxes : public QWidget {
public:
    /// @param boxName object name of the boxes, "_0" to "_3" appended
    /// @param dotName object name of the dots, "_0" to "_2" appended
    AddressBoxes(const char *boxName, const char *dotName, const AddressView &addressView,
                 QWidget *parent);

    void refresh();

    std::function<void(const AddressPlace &before, const std::string &now)> changed;
    std::function<void(int box)> backspaceInEmpty;
    std::function<void(int box)> entered; ///< Enter, unless it is the window's own business
    std::function<void(int box)> left = [](int) {};

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void noteSelection(int box);

    const AddressView &view;
    std::array<QLineEdit *, AddressEntry::BoxCount> boxes{};
    AddressPlace selection; ///< before the event that is under way
    int shownCursor;        ///< what the view moved before is not moved again
};
