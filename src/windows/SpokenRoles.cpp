#include "SpokenRoles.h"

#include "FaceButton.h"
#include "Lamp.h"
#include "LinkPicture.h"
#include "OptionButton.h"
#include "PortList.h"
#include "PressLabel.h"
#include "Window.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QHideEvent>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace {

/// The roles of the windows; every other one is a dialog.
constexpr std::array<std::pair<std::string_view, QAccessible::Role>, 5> WindowRoles{
    {{"frmMain", QAccessible::Window},
     {"KVN32x32Audio", QAccessible::Window},
     {"dlgOK", QAccessible::AlertMessage},
     {"plainBox", QAccessible::AlertMessage},
     {"dlgYesNo", QAccessible::AlertMessage}}};

class SpokenWindow : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] QAccessible::Role role() const override {
        const std::string name = widget()->objectName().toStdString();
        const auto *found = std::find_if(WindowRoles.begin(), WindowRoles.end(),
                                         [&](const auto &row) { return row.first == name; });
        return found == WindowRoles.end() ? QAccessible::Dialog : found->second;
    }
    /// An alert is described by what it says.
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        QString own = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Description || role() != QAccessible::AlertMessage)
            return own;
        const QString message = widget()->findChild<QLabel *>()->text();
        return own.isEmpty() ? message : message + u'\n' + own;
    }
};

/// What is pressed: a widget of a text, named by it unless it has a spoken name.
template <class Pressed> class SpokenPressed : public QAccessibleWidget {
public:
    SpokenPressed(Pressed *pressed, QAccessible::Role role) : QAccessibleWidget(pressed, role) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name && widget()->accessibleName().isEmpty())
            return pressed().text();
        return QAccessibleWidget::text(kind);
    }
    [[nodiscard]] QStringList actionNames() const override {
        const bool can = pressed().isEnabled() && canBePressed();
        return (can ? QStringList{pressAction()} : QStringList()) +
               QAccessibleWidget::actionNames();
    }
    void doAction(const QString &action) override {
        if (action != pressAction())
            QAccessibleWidget::doAction(action);
        else if (pressed().isEnabled())
            press();
    }

protected:
    [[nodiscard]] Pressed &pressed() const { return static_cast<Pressed &>(*widget()); }
    [[nodiscard]] virtual bool canBePressed() const { return true; }
    virtual void press() = 0;
};

/// A button that stays chosen by what the view says. Qt's own would change it without a click.
class SpokenChoice : public SpokenPressed<QAbstractButton> {
public:
    using SpokenPressed::SpokenPressed;

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State all = QAccessibleWidget::state();
        const auto *face = dynamic_cast<const FaceButton *>(&pressed());
        all.checkable = true;
        all.checked = face ? face->spokenChecked().value_or(false) : pressed().isChecked();
        all.pressed = pressed().isDown();
        return all;
    }

protected:
    void press() override { pressed().animateClick(); }
};

class SpokenLabel : public SpokenPressed<PressLabel> {
public:
    explicit SpokenLabel(PressLabel *label) : SpokenPressed(label, QAccessible::StaticText) {}

protected:
    [[nodiscard]] bool canBePressed() const override { return pressed().canBePressed(); }
    void press() override {
        // Not within the call of the screen reader, which waits for its end.
        QMetaObject::invokeMethod(
            &pressed(), [label = &pressed()] { label->press(); }, Qt::QueuedConnection);
    }
};

/// Qt names a list by its choice. This one keeps its name, and describes itself by the choice.
class SpokenPortList : public QAccessibleWidget {
public:
    explicit SpokenPortList(PortList *list) : QAccessibleWidget(list, QAccessible::ComboBox) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        QString own = QAccessibleWidget::text(kind);
        QString choice = list().currentText();
        if (kind == QAccessible::Value)
            return choice;
        if (kind != QAccessible::Description || choice.isEmpty())
            return own;
        return own.isEmpty() ? choice : choice + QStringLiteral(". ") + own;
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State all = QAccessibleWidget::state();
        all.expandable = true;
        all.expanded = list().view()->isVisible();
        all.collapsed = !all.expanded;
        all.hasPopup = true;
        return all;
    }
    [[nodiscard]] int childCount() const override { return list().view()->isVisible() ? 1 : 0; }
    [[nodiscard]] QAccessibleInterface *child(int index) const override {
        return index == 0 ? entries() : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        return child == entries() ? 0 : -1;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return QStringList{showMenuAction(), pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString &action) override {
        if (action != showMenuAction() && action != pressAction())
            QAccessibleWidget::doAction(action);
        else if (list().view()->isVisible())
            list().hidePopup();
        else if (list().isEnabled())
            list().showPopup();
    }

private:
    [[nodiscard]] PortList &list() const { return static_cast<PortList &>(*widget()); }
    [[nodiscard]] QAccessibleInterface *entries() const {
        return QAccessible::queryAccessibleInterface(list().view());
    }
};

/// Holds what is announced. Screen readers speak such an object when it comes up.
class Notice : public QWidget {
public:
    explicit Notice(QWidget *window) : QWidget(window) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(0, 0);
    }

protected:
    // It would be spoken once more when its window is shown again.
    void hideEvent(QHideEvent *event) override {
        if (!event->spontaneous())
            hide();
    }
};

QAccessibleInterface *spoken(const QString &, QObject *object) {
    if (auto *window = dynamic_cast<Window *>(object))
        return new SpokenWindow(window);
    if (auto *button = dynamic_cast<FaceButton *>(object))
        return button->spokenChecked() ? new SpokenChoice(button, QAccessible::Button) : nullptr;
    if (auto *option = dynamic_cast<OptionButton *>(object))
        return new SpokenChoice(option, QAccessible::RadioButton);
    if (auto *label = dynamic_cast<PressLabel *>(object))
        return new SpokenLabel(label);
    if (auto *list = dynamic_cast<PortList *>(object))
        return new SpokenPortList(list);
    if (dynamic_cast<Lamp *>(object) || dynamic_cast<LinkPicture *>(object))
        return new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Graphic);
    if (auto *notice = dynamic_cast<Notice *>(object))
        return new QAccessibleWidget(notice, QAccessible::Notification);
    return nullptr;
}

} // namespace

void useSpokenRoles() { QAccessible::installFactory(spoken); }

void forgetAnnouncements() {
    for (QWidget *window : QApplication::topLevelWidgets()) {
        for (QObject *child : window->children()) {
            if (auto *notice = dynamic_cast<Notice *>(child))
                notice->hide();
        }
    }
}

void announce(QWidget &window, const QString &text) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(&window, text);
    QAccessible::updateAccessibility(&event);
#else
    Notice *notice = nullptr;
    for (QObject *child : window.children())
        notice = notice ? notice : dynamic_cast<Notice *>(child);
    if (!notice)
        notice = new Notice(&window);
    notice->hide();
    notice->setAccessibleName(text);
    notice->show();
    QAccessibleEvent event(notice, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
#endif
}
