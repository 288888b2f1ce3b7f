#pragma once

#include "GridFocus.h"
#include "Lamp.h"
#include "PressLabel.h"
#include "forms/Control.h"
#include "forms/Form.h"
#include "link/LinkStatusDisplay.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QVBoxLayout>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

/// Shows one form and reports what the user does. What is shown comes from the form's view alone
/// and is brought up to date by refresh(), which touches only what differs. Enter presses the
/// button that has the focus.
class Window : public QWidget {
public:
    /// @param name object name
    Window(const char *name, Form &shownForm, const FormView &shownView);

    /// Brings the window up to date with its view.
    void refresh();

    /// Called after everything that was reported; all windows may have to change.
    std::function<void()> reported = [] {};

    /// Called with what changed without the focus, for a screen reader to speak.
    std::function<void(const QString &text)> changedUnseen = [](const QString &) {};

protected:
    /// Reports an action of the user to the form.
    void report(const std::function<void()> &action);
    void whenClicked(QAbstractButton *button, std::function<void()> action);
    void whenKey(const QKeySequence &keys, std::function<void()> action);
    /// Puts the menu bar into the layout; F10 opens its first menu, Esc leaves all of it.
    void setMenuBar(QMenuBar *bar);
    /// Lets the arrow keys lead from each control that was made so far to the one that stands next.
    void leadByArrows();

    /// Brings up to date what is not bound.
    virtual void refreshRest() {}

    /// Keeps a widget up to date with a control of the view from now on.
    void bind(QAbstractButton *button, const Control &control);
    void bind(QLabel *label, const Control &control);
    void bind(QLineEdit *box, const Control &control);
    void bind(Lamp *lamp, const Control &control);
    void bind(QGroupBox *frame, const Control &control);
    /// Lets a label that is bound be spoken whenever its text changes.
    /// @param idle the text that stands there while there is nothing to tell
    void announceChanges(const QLabel *label, const std::string &idle = {});
    /// Visibility and availability only.
    void bindPresence(QWidget *widget, const Control &control);
    struct StatusWidgets {
        PressLabel *ZarnConnectedLabel;
        QWidget *ZarnConnectedImage;
        QWidget *ZarnNotConnectedImage;
    };
    /// The status label and the two link pictures, which it makes as children of `parent`.
    StatusWidgets bindStatus(QWidget *parent, const LinkStatusView &status);
    /// Adds a row of the pictures and the label to a layout of the window.
    /// @param height of the label at least, in pixels
    /// @return the label
    PressLabel *addLinkRow(QVBoxLayout *layout, const LinkStatusView &status, int height);

    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool focusNextPrevChild(bool next) override;

    Form &form;
    GridFocus *stops = nullptr; ///< where Tab leads; none: from control to control

private:
    struct Bound {
        QWidget *widget;
        const Control *control;
        void (*showText)(QWidget &, const Control &);
        std::optional<Control> shown;
        bool announced = false;
        std::string idle{};
    };

    void bindAs(QWidget *widget, const Control &control,
                void (*showText)(QWidget &, const Control &));
    void refreshBound();
    void tellChange(const Bound &binding);
    void refreshStatus();
    void showStatusColours();
    void refreshForm();

    const FormView &formView;
    std::vector<Bound> bound;
    const LinkStatusView *linkStatus = nullptr;
    std::optional<LinkStatusView> shownStatus;
    StatusWidgets statusWidgets{};
    bool shownLoaded = false;
    bool shownMinimised = false;
    int shownRaised = 0;
    int shownFocus = 0;
    QPointer<QWidget> parkedFocus; ///< lost the focus because it was disabled
    QPointer<QWidget> parkedAt;    ///< where the focus went then
};

/// Gives a widget its object name.
template <class Widget> Widget *named(Widget *widget, const char *name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

/// Shows the tool tip and the description of a control, as far as they differ from `before`. A
/// widget keeps its own where the control never had any.
void showHints(QWidget &widget, const Control &before, const Control &now);

/// Makes a box that shows and takes no typing, and looks like it.
void makeReadOnly(QLineEdit *box);

/// Lets a widget keep its place while it is hidden.
void keepPlaceWhenHidden(QWidget *widget);

/// Makes a window that is about to be shown belong to the modal window that is open, if one is.
/// Otherwise it could not be answered.
void placeOverModalWindow(QWidget &window);
