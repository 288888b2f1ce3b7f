#include "PresetsWindow.h"

#include "FaceButton.h"
#include "ProgramLook.h"

#include <QGridLayout>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>

#include <algorithm>

namespace {
constexpr int MostColumns = 8;
}

PresetsWindow::PresetsWindow(dlgPresets &presetsForm, const PresetsView &presetsView)
    : Window("dlgPresets", presetsForm, presetsView.form) {
    setWindowTitle(QStringLiteral("Preset Handler"));
    stops = new GridFocus(this);
    const int margin = grown(16);
    const int gap = grown(8);
    const QSize smallest = grown(QSize(72, 32));
    // With a large font a narrow screen has room for fewer beside each other, and they are
    // scrolled.
    const QSize largest = screen()->availableSize() * 9 / 10;
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int room = largest.width() - 2 * margin - bar;
    const int columns = std::clamp((room + gap) / (smallest.width() + gap), 1, MostColumns);
    auto *sheet = new QWidget;
    sheet->setAccessibleName(QStringLiteral("Presets"));
    auto *grid = new QGridLayout(sheet);
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setSpacing(gap);
    for (int preset = 1; preset <= presetsView.NewPresetButton.last(); ++preset) {
        auto *button = new FaceButton(QString(), this);
        button->setObjectName(QStringLiteral("NewPresetButton_%1").arg(preset));
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        button->setMinimumSize(smallest);
        button->setSpokenChecked(false);
        grid->addWidget(button, (preset - 1) / columns, (preset - 1) % columns);
        stops->add(button, 0);
        bind(button, presetsView.NewPresetButton[preset]);
        whenClicked(button, [&presetsForm, preset] { presetsForm.NewPresetButton_Click(preset); });
    }
    auto *scroller = new QScrollArea(this);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setFocusPolicy(Qt::NoFocus);
    scroller->setWidgetResizable(true);
    scroller->setWidget(sheet);
    auto *ExecutePresetButton = named(new FaceButton(QString(), this), "ExecutePresetButton");
    auto *ExitPresets = named(new FaceButton(QString(), this), "ExitPresets");
    for (FaceButton *button : {ExecutePresetButton, ExitPresets})
        button->setMinimumHeight(grown(40));
    auto *commands = new QHBoxLayout;
    commands->setContentsMargins(margin, grown(12), margin, margin);
    commands->setSpacing(gap);
    commands->addWidget(ExecutePresetButton, 1);
    commands->addWidget(ExitPresets, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(scroller);
    layout->addLayout(commands);
    stops->add(ExecutePresetButton, 1);
    stops->add(ExitPresets, 2);
    bind(ExecutePresetButton, presetsView.ExecutePresetButton);
    bind(ExitPresets, presetsView.ExitPresets);
    whenClicked(ExecutePresetButton, [&presetsForm] { presetsForm.ExecutePresetButton_Click(); });
    whenClicked(ExitPresets, [&presetsForm] { presetsForm.ExitPresets_Click(); });
    whenKey(Qt::Key_Escape, [&presetsForm] { presetsForm.ExitPresets_Click(); });
    QSize whole = sheet->sizeHint() + QSize(0, commands->sizeHint().height());
    if (whole.height() > largest.height())
        whole.rwidth() += bar;
    resize(whole.boundedTo(largest));
}
