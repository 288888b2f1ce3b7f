#include "panel/dlgPresets.h"

#include "platform/thenAlways.h"
#include "protocol/CommandTexts.h"
#include "widgets/Colours.h"

#include <QGridLayout>

#include <utility>

namespace {
constexpr int Columns = 8;
}

dlgPresets::dlgPresets(const PanelTools &panelTools, ConnectionDisplay &connectionDisplay,
                       std::function<void()> restorePanel)
    : Form("dlgPresets", panelTools.link.pump, &panelTools.link.guard),
      link(panelTools.link),
      panel(panelTools.panel),
      display(connectionDisplay),
      restore(std::move(restorePanel)),
      ExecutePresetButton(new FaceButton(QStringLiteral("EXECUTE"), this)),
      ExitPresets(new FaceButton(QStringLiteral("CLOSE PRESETS"), this)) {
    setWindowTitle(QStringLiteral("Preset Handler"));
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(16, 16, 16, 16);
    grid->setSpacing(8);
    NewPresetButton[0] = new FaceButton(QString(), this);
    NewPresetButton[0]->hide();
    for (int preset = 1; preset <= NewPresetButton.last(); ++preset) {
        auto *button = new FaceButton(QString(), this);
        button->setObjectName(QStringLiteral("NewPresetButton_%1").arg(preset));
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        button->setMinimumSize(92, 40);
        grid->addWidget(button, (preset - 1) / Columns, (preset - 1) % Columns);
        whenClicked(button, [this, preset] { choose(preset); });
        NewPresetButton[preset] = button;
    }
    const int lastRow = grid->rowCount();
    ExecutePresetButton->setObjectName(QStringLiteral("ExecutePresetButton"));
    ExitPresets->setObjectName(QStringLiteral("ExitPresets"));
    for (FaceButton *button : {ExecutePresetButton, ExitPresets})
        button->setMinimumHeight(44);
    grid->setRowMinimumHeight(lastRow, 12);
    grid->addWidget(ExecutePresetButton, lastRow + 1, 0, 1, Columns / 2);
    grid->addWidget(ExitPresets, lastRow + 1, Columns / 2, 1, Columns / 2);
    QWidget::setTabOrder(NewPresetButton[NewPresetButton.last()], ExecutePresetButton);
    QWidget::setTabOrder(ExecutePresetButton, ExitPresets);
    whenClicked(ExecutePresetButton, [this] { execute(); });
    whenClicked(ExitPresets, [this] { unload(); });
    whenKey(Qt::Key_Escape, [this] { ExitPresets->click(); });
}

void dlgPresets::LoadForm() {
    if (isLoaded()) { // the choice and its mark stand
        present();
        return;
    }
    for (int preset = 1; preset <= NewPresetButton.last(); ++preset) {
        NewPresetButton[preset]->setText(QStringLiteral("Preset %1").arg(preset));
        NewPresetButton[preset]->setFace(colour::Neutral);
    }
    ExecutePresetButton->setFace(colour::Neutral);
    NewPresetButton[1]->setFocus();
    present();
}

void dlgPresets::unload() {
    if (!isLoaded())
        return;
    Form::unload();
    restore();
}

void dlgPresets::choose(int preset) {
    const int before = panel.CurrentPreset;
    if (before != preset && before >= 1 && before <= NewPresetButton.last())
        NewPresetButton[before]->setFace(colour::Neutral);
    panel.CurrentPreset = preset;
    NewPresetButton[preset]->setFace(colour::Chosen);
}

void dlgPresets::execute() {
    if (panel.CurrentPreset == 0)
        return;
    ExecutePresetButton->setFace(colour::Busy);
    thenAlways(
        [this] {
            link.dispatch.exchangeCommand(command::executePreset(panel.CurrentPreset));
            display.DisplayOutputsConnectedtoInputs();
        },
        [this] {
            ExecutePresetButton->setFace(colour::Neutral);
            NewPresetButton[panel.CurrentPreset]->setFace(colour::Neutral);
            panel.CurrentPreset = 0;
        });
}
