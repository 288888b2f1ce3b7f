#include "GridFocus.h"

#include "Navigation.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollArea>

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

std::optional<Direction> directionOf(int key) {
    switch (key) {
    case Qt::Key_Left:
        return Direction::Left;
    case Qt::Key_Right:
        return Direction::Right;
    case Qt::Key_Up:
        return Direction::Up;
    case Qt::Key_Down:
        return Direction::Down;
    default:
        return std::nullopt;
    }
}

/// Whether a control needs an arrow key for itself.
/// @param held the key repeats; nobody means to leave by that
bool needs(const QWidget *control, Direction direction, bool held) {
    const bool alongRow = direction == Direction::Left || direction == Direction::Right;
    const bool onward = direction == Direction::Right || direction == Direction::Down;
    const auto *box = qobject_cast<const QLineEdit *>(control);
    if (box && alongRow && !box->isReadOnly()) {
        const auto end = onward ? box->text().size() : 0;
        return held || box->hasSelectedText() || box->cursorPosition() != end;
    }
    const auto *list = qobject_cast<const QAbstractItemView *>(control);
    if (list && !alongRow && list->model()->rowCount() > 0) {
        const int end = onward ? list->model()->rowCount() - 1 : 0;
        return held || !list->selectionModel()->hasSelection() || list->currentIndex().row() != end;
    }
    return qobject_cast<const QComboBox *>(control) && direction == Direction::Down;
}

void scrollTo(QWidget *control) {
    for (QWidget *around = control->parentWidget(); around; around = around->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(around))
            area->ensureWidgetVisible(control);
    }
}

} // namespace

void GridFocus::add(QWidget *control, int group) {
    members.push_back({control, group});
    lastIn[group];
    control->installEventFilter(this);
}

bool GridFocus::isReachable(const QWidget *control) const {
    return control && control->isEnabled() && control->isVisibleTo(window) &&
           (control->focusPolicy() & Qt::TabFocus) != 0;
}

QWidget *GridFocus::entryOf(int group) const {
    if (QWidget *last = lastIn.at(group); isReachable(last))
        return last;
    const auto first = std::find_if(members.begin(), members.end(), [&](const Member &member) {
        return member.group == group && isReachable(member.control);
    });
    return first == members.end() ? nullptr : first->control;
}

bool GridFocus::toNextGroup(bool forward) {
    const auto has = std::find_if(members.begin(), members.end(), [this](const Member &member) {
        return member.control == window->focusWidget();
    });
    auto group = has == members.end() ? (forward ? std::prev(lastIn.end()) : lastIn.begin())
                                      : lastIn.find(has->group);
    for (std::size_t tried = 0; tried < lastIn.size(); ++tried) {
        if (forward)
            group = std::next(group) == lastIn.end() ? lastIn.begin() : std::next(group);
        else
            group = std::prev(group == lastIn.begin() ? lastIn.end() : group);
        if (QWidget *entry = entryOf(group->first)) {
            entry->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}

bool GridFocus::moveBy(const QKeyEvent &key, QWidget *from) {
    const std::optional<Direction> direction = directionOf(key.key());
    if (!direction || needs(from, *direction, key.isAutoRepeat()))
        return false;
    std::vector<QWidget *> controls;
    std::vector<QRect> places;
    for (const Member &member : members) {
        if (member.control != from && !isReachable(member.control))
            continue;
        controls.push_back(member.control);
        places.emplace_back(member.control->mapTo(window, QPoint()), member.control->size());
    }
    const auto start = std::find(controls.begin(), controls.end(), from) - controls.begin();
    if (const auto next = nextPlace(places, static_cast<std::size_t>(start), *direction))
        controls.at(*next)->setFocus(Qt::TabFocusReason);
    return true;
}

bool GridFocus::eventFilter(QObject *watched, QEvent *event) {
    auto *control = static_cast<QWidget *>(watched);
    if (event->type() == QEvent::FocusIn) {
        const auto found = std::find_if(members.begin(), members.end(), [&](const Member &member) {
            return member.control == control;
        });
        lastIn[found->group] = control;
        scrollTo(control);
    } else if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if ((key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier && moveBy(*key, control))
            return true;
    }
    return QObject::eventFilter(watched, event);
}
