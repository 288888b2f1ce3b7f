#pragma once

#include <QPointer>
#include <QWidget>

#include <map>
#include <vector>

class QKeyEvent;

/// Moves the focus among the controls of a window: the arrow keys to the one that stands next on
/// screen, Tab from group to group. A group is entered at the control that had the focus last in
/// it, at first at its first one. Controls that are hidden, disabled or no Tab stop are passed
/// over. A box or a list that needs an arrow for its content keeps it until the content ends there.
class GridFocus : public QObject {
public:
    /// @param ofWindow owns this and, however deep, all controls
    explicit GridFocus(QWidget *ofWindow) : QObject(ofWindow), window(ofWindow) {}

    /// @param group Tab stops at the groups in the order of their numbers
    void add(QWidget *control, int group);

    /// What Tab or Shift+Tab does. False if there is no control that could have the focus.
    bool toNextGroup(bool forward);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Member {
        QWidget *control;
        int group;
    };

    [[nodiscard]] bool isReachable(const QWidget *control) const;
    [[nodiscard]] QWidget *entryOf(int group) const;
    bool moveBy(const QKeyEvent &key, QWidget *from);

    QWidget *window;
    std::vector<Member> members;
    std::map<int, QPointer<QWidget>> lastIn; ///< of every group, null at first
};
