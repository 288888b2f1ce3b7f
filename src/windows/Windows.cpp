#include "Windows.h"

#include "AboutWindow.h"
#include "ConnectWindow.h"
#include "HelpWindow.h"
#include "MessageWindow.h"
#include "PanelWindow.h"
#include "PresetsWindow.h"
#include "SetupWindow.h"
#include "SpokenRoles.h"
#include "StartWindow.h"
#include "UnitsWindow.h"
#include "start/ProgramTitle.h"

#include <QApplication>

#include <utility>

Windows::Windows(Program &shownProgram) : program(shownProgram) {
    useSpokenRoles();
    Views &views = program.views;
    const auto add = [this](const FormView &view, auto make) {
        entries.push_back({&view, std::move(make), nullptr});
    };
    add(views.main.form, [this, &views] {
        return std::make_unique<StartWindow>(program.startForm, views.main,
                                             [this] { program.aboutForm.present(); });
    });
    const auto messageWindow = [](const char *name, const char *title, Form &form,
                                  const MessageView &view) {
        auto window = std::make_unique<MessageWindow>(
            name, form, view.form, "OKLabel", view.OKLabel,
            std::vector<MessageWindow::Button>{
                {"OKButton", view.OKButton, [&form] { form.unload(); }}});
        window->setWindowTitle(QLatin1String(title));
        return window;
    };
    add(views.messages.plainBox.form, [this, &views, messageWindow] {
        auto box = messageWindow("plainBox", ProgramTitle, program.messages.plainBox(),
                                 views.messages.plainBox);
        box->setWindowModality(Qt::ApplicationModal);
        return box;
    });
    add(views.messages.dlgYesNo.form,
        [&messages = program.messages, &view = views.messages.dlgYesNo] {
            auto question = std::make_unique<MessageWindow>(
                "dlgYesNo", messages.dlgYesNo(), view.form, "YesNoText", view.YesNoText,
                std::vector<MessageWindow::Button>{
                    {"YesButton", view.YesButton, [&messages] { messages.answer(true); }},
                    {"NoButton", view.NoButton, [&messages] { messages.answer(false); }}});
            // It has no caption; a blank keeps the desktop from showing the program's name instead.
            question->setWindowTitle(QStringLiteral(" "));
            question->setAccessibleName(QStringLiteral("Question"));
            return question;
        });
    add(views.connect.form, [this, &views] {
        return std::make_unique<ConnectWindow>(program.connectForm, views.connect);
    });
    add(views.units.form,
        [this, &views] { return std::make_unique<UnitsWindow>(program.unitsForm, views.units); });
    add(views.panel.form, [this, &views] {
        return std::make_unique<PanelWindow>(
            program.panelForm, views.panel,
            [this](std::size_t topic) { program.helpForms.at(topic).present(); });
    });
    add(views.presets.form, [this, &views] {
        return std::make_unique<PresetsWindow>(program.panelForm.presetsForm(), views.presets);
    });
    add(views.setup,
        [this, &views] { return std::make_unique<SetupWindow>(program.setupForm, views.setup); });
    add(views.about,
        [this, &views] { return std::make_unique<AboutWindow>(program.aboutForm, views.about); });
    for (std::size_t topic = 0; topic < HelpTexts.size(); ++topic) {
        add(views.help.at(topic), [this, &views, topic] {
            return std::make_unique<HelpWindow>(HelpTexts.at(topic), program.helpForms.at(topic),
                                                views.help.at(topic));
        });
    }
    // The last one, so that it comes up over the others.
    add(views.messages.dlgOK.form, [this, &views, messageWindow] {
        return messageWindow("dlgOK", "Confirm", program.messages.dlgOK(), views.messages.dlgOK);
    });
    program.pump.show = [this] { refresh(); };
}

Windows::~Windows() {
    program.pump.show = [] {};
}

void Windows::refresh() {
    changedMeanwhile = true;
    if (std::exchange(refreshing, true))
        return;
    // What a window reports while it changes is shown in a further round.
    while (std::exchange(changedMeanwhile, false))
        refreshAll();
    refreshing = false;
    // Not quit(): that asks the windows first, and they answer a close in their own way.
    if (program.pump.ended())
        QApplication::exit(0);
}

void Windows::refreshAll() {
    program.panelForm.describe();
    // What goes first, so that what comes up keeps the focus.
    for (const Entry &entry : entries) {
        if (entry.window && !entry.view->loaded)
            entry.window->refresh();
    }
    for (Entry &entry : entries) {
        if (!entry.view->loaded)
            continue;
        if (!entry.window) {
            entry.window = entry.make();
            entry.window->reported = [this] { refresh(); };
            entry.window->changedUnseen = [this, window = entry.window.get()](const QString &text) {
                Window *&speaker = news[text];
                if (!speaker || window->isActiveWindow())
                    speaker = window;
            };
        }
        entry.window->refresh();
    }
    if (!news.empty())
        forgetAnnouncements();
    for (const auto &[text, window] : std::exchange(news, {}))
        announce(*window, text);
}
