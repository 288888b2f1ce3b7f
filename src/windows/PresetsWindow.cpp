#include "PresetsWindow.h"

#include "FaceButton.h"
#include "ProgramLook.h"

#include <QGridLayout>

namespace {
constexpr int Columns = 8;
}

PresetsWindow::PresetsWindow(dlgPresets &presetsForm, const PresetsView &presetsView)
    : Window("dlgPresets", presetsForm, presetsView.form) {
    setWindowTitle(QStringLiteral("Preset Handler"));
    stops = new GridFocus(this);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(grown(QMargins(16, 16, 16, 16)));
    grid->setSpacing(grown(8));
    for (int preset = 1; preset <= presetsView.NewPresetButton.last(); ++preset) {
        auto *button = new FaceButton(QString(), this);
        button->setObjectName(QStringLiteral("NewPresetButton_%1").arg(preset));
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        button->setMinimumSize(grown(QSize(72, 32)));
        button->setSpokenChecked(false);
        grid->addWidget(button, (preset - 1) / Columns, (preset - 1) % Columns);
        stops->add(button, 0);
        bind(button, presetsView.NewPresetButton[preset]);
        whenClicked(button, [&presetsForm, preset] { presetsForm.NewPresetButton_Click(preset); });
    }
    const int lastRow = grid->rowCount();
    auto *ExecutePresetButton = named(new FaceButton(QString(), this), "ExecutePresetButton");
    auto *ExitPresets = named(new FaceButton(QString(), this), "ExitPresets");
    for (FaceButton *button : {ExecutePresetButton, ExitPresets})
        button->setMinimumHeight(grown(40));
    grid->setRowMinimumHeight(lastRow, grown(12));
    grid->addWidget(ExecutePresetButton, lastRow + 1, 0, 1, Columns / 2);
    grid->addWidget(ExitPresets, lastRow + 1, Columns / 2, 1, Columns / 2);
    stops->add(ExecutePresetButton, 1);
    stops->add(ExitPresets, 2);
    bind(ExecutePresetButton, presetsView.ExecutePresetButton);
    bind(ExitPresets, presetsView.ExitPresets);
    whenClicked(ExecutePresetButton, [&presetsForm] { presetsForm.ExecutePresetButton_Click(); });
    whenClicked(ExitPresets, [&presetsForm] { presetsForm.ExitPresets_Click(); });
    whenKey(Qt::Key_Escape, [&presetsForm] { presetsForm.ExitPresets_Click(); });
}
