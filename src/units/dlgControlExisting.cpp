#include "units/dlgControlExisting.h"

#include "platform/thenAlways.h"
#include "protocol/ReplyClass.h"
#include "protocol/Text.h"
#include "units/SavedUnitsText.h"
#include "widgets/TextConversion.h"

#include <QKeyEvent>
#include <QPointer>
#include <QSignalBlocker>

namespace {

constexpr int LingerSeconds = 3;

QString captionOf(dlgControlExisting::Operation operation) {
    return QLatin1String(OperationCaptions.at(static_cast<std::size_t>(operation)));
}

/// A name in a list or a question. A file can hold names that no window has room for.
QString shownName(const std::string &name) {
    constexpr std::size_t Longest = 60;
    if (name.size() <= Longest)
        return shown(name);
    return shown(name.substr(0, Longest)) + QStringLiteral("...");
}

QString selectedText(const QListWidget &list) {
    const QList<QListWidgetItem *> selected = list.selectedItems();
    return selected.isEmpty() ? QString() : selected.front()->text();
}

/// The keys begin at the first entry, which is not picked yet.
void beginAtTheFirst(QListWidget &list) { list.setCurrentRow(0, QItemSelectionModel::NoUpdate); }

} // namespace

dlgControlExisting::dlgControlExisting(const LinkTools &linkTools, SavedUnits &savedUnits,
                                       SavedUnitsFile &unitsFile, dlgConnect &dialog,
                                       UnitsHost &unitsHost)
    : Form("dlgControlExisting", linkTools.pump, &linkTools.guard),
      link(linkTools),
      units(savedUnits),
      file(unitsFile),
      connectDialog(dialog),
      host(unitsHost),
      controls(*this, link.state.IPAddressQuads) {
    setWindowTitle(QStringLiteral("Control Existing Corvane"));
    link.display.attach(StatusWindow::SavedUnits, controls.status);
    connectControls();
}

void dlgControlExisting::connectControls() {
    for (std::size_t index = 0; index < controls.OptionsCommand.size(); ++index)
        whenClicked(controls.OptionsCommand.at(index),
                    [this, index] { chooseOperation(static_cast<Operation>(index)); });
    whenClicked(controls.OKButton, [this] {
        host.showStartWindow();
        unload();
    });
    connect(controls.AvailCorvanesList, &QListWidget::itemSelectionChanged, this,
            [this] { pickUnit(); });
    connect(controls.AvailCorvanesList, &QListWidget::itemClicked, this, [this] { pickUnit(); });
    connect(controls.AvailCorvanesList, &QListWidget::itemDoubleClicked, this,
            [this] { act([this] { busyWhile([this] { ConnectControlButton(); }); }); });
    connect(controls.ConnectChoiceList, &QListWidget::itemSelectionChanged, this,
            [this] { pickKind(); });
    for (QListWidget *list : {controls.AvailCorvanesList, controls.ConnectChoiceList})
        list->installEventFilter(this);
    whenClicked(controls.AddCorvaneCommand, [this] { carryOut(); });
    whenClicked(controls.CancelCommand, [this] { showOptions(); });
    whenKey(Qt::Key_Escape, [this] {
        if (controls.AddCorvaneFrame->isHidden() || busy)
            unload();
        else
            controls.CancelCommand->click();
    });
}

void dlgControlExisting::LoadForm() {
    if (busy) {
        present();
        return;
    }
    controls.StatusLabel->hide();
    showOptions();
    initialzeControlLists();
    present();
    InitializeKVNControlBlocks();
}

void dlgControlExisting::showOptions() {
    controls.AddCorvaneFrame->hide();
    controls.OptionsFrame->show();
    controls.OptionsCommand.front()->setFocus();
}

void dlgControlExisting::initialzeControlLists() {
    const QSignalBlocker silent(controls.ConnectChoiceList);
    controls.ConnectChoiceList->clear();
    controls.ConnectChoiceList->addItems({QLatin1String(SerialType), QLatin1String(EtherType)});
    beginAtTheFirst(*controls.ConnectChoiceList);
}

void dlgControlExisting::InitializeKVNControlBlocks() {
    const std::string failure = file.CheckGetIniFile();
    {
        const QSignalBlocker silent(controls.AvailCorvanesList);
        controls.AvailCorvanesList->clear();
        for (int index = 1; index <= units.ControlBlockCount; ++index)
            controls.AvailCorvanesList->addItem(shownName(units.KVNControlBlocks[index].Name));
    }
    if (!failure.empty())
        link.messages.ShowMessage(failure);
}

void dlgControlExisting::chooseOperation(Operation operation) {
    if (busy)
        return;
    const bool adds = operation == Operation::Add;
    controls.StatusLabel->hide();
    controls.IPAddressFrame->hide();
    initialzeControlLists();
    InitializeKVNControlBlocks();
    units.SelectedBlockIndex = 0;
    controls.OptionsFrame->hide();
    controls.AddCorvaneFrame->setTitle(captionOf(operation));
    controls.AddCorvaneCommand->setText(captionOf(operation));
    controls.Text3->clear();
    controls.Text3->setEnabled(adds);
    controls.namePrompt->setEnabled(adds);
    controls.AvailCorvanesList->setEnabled(!adds);
    controls.unitPrompt->setText(QStringLiteral("Select Corvane"));
    controls.unitPrompt->setEnabled(!adds);
    controls.ConnectChoiceList->setEnabled(adds);
    controls.ControlledbyText->clear();
    controls.CntrlIPAddressQuad->clear();
    controls.AddCorvaneFrame->show();
    updateCommand();
    if (adds) {
        controls.Text3->setFocus();
    } else {
        beginAtTheFirst(*controls.AvailCorvanesList);
        controls.AvailCorvanesList->setFocus();
    }
}

void dlgControlExisting::updateCommand() {
    // Without a unit picked there is nothing that could be edited, controlled or deleted.
    const bool adds = controls.AddCorvaneFrame->title() == captionOf(Operation::Add);
    controls.AddCorvaneCommand->setEnabled(adds || units.SelectedBlockIndex != 0);
}

void dlgControlExisting::pickUnit() {
    if (controls.AvailCorvanesList->selectedItems().isEmpty()) {
        pickNoUnit();
        return;
    }
    units.SelectedBlockIndex = controls.AvailCorvanesList->currentRow() + 1;
    const KVNControlBlock &block = units.KVNControlBlocks[units.SelectedBlockIndex];
    const bool ether = block.ConnectType == EtherType;
    controls.ControlledbyText->setText(QLatin1String(ether ? EtherType : SerialType));
    controls.IPAddressFrame->setVisible(ether);
    controls.CntrlIPAddressQuad->clear();
    if (ether) {
        std::array<std::string, 5> quads;
        int position = 1;
        for (std::size_t quad = 0; quad < 4; ++quad)
            quads.at(quad) = ReadIPQuadToken(block.IPAddress, position);
        controls.CntrlIPAddressQuad->fill(quads);
    }
    {
        // Saving takes the kind from its list, so an untouched kind must stay what it was.
        const QSignalBlocker silent(controls.ConnectChoiceList);
        controls.ConnectChoiceList->setCurrentRow(ether ? 1 : 0);
    }
    controls.ConnectChoiceList->setEnabled(true);
    updateCommand();
}

void dlgControlExisting::pickNoUnit() {
    units.SelectedBlockIndex = 0;
    controls.ControlledbyText->clear();
    controls.IPAddressFrame->hide();
    controls.CntrlIPAddressQuad->clear();
    const QSignalBlocker silent(controls.ConnectChoiceList);
    controls.ConnectChoiceList->clearSelection();
    controls.ConnectChoiceList->setEnabled(false);
    updateCommand();
}

void dlgControlExisting::pickKind() {
    const std::string kind = kindText();
    if (kind.empty()) {
        // A kind once chosen can be changed, not taken back.
        controls.ConnectChoiceList->setCurrentRow(controls.ConnectChoiceList->currentRow());
        return;
    }
    controls.IPAddressFrame->setVisible(kind == EtherType);
    if (units.SelectedBlockIndex != 0)
        controls.ControlledbyText->setText(shown(kind));
}

std::string dlgControlExisting::kindText() const {
    return typed(selectedText(*controls.ConnectChoiceList));
}

void dlgControlExisting::showStatus(const char *text) {
    controls.StatusLabel->setText(QLatin1String(text));
    controls.StatusLabel->show();
}

bool dlgControlExisting::save() {
    const std::string failure = file.Write2Disk();
    if (failure.empty())
        return true;
    controls.StatusLabel->hide();
    link.messages.ShowMessage(failure);
    return false;
}

void dlgControlExisting::busyWhile(const std::function<void()> &operation) {
    if (busy)
        return;
    busy = true;
    const QPointer<QWidget> focus = focusWidget();
    controls.AddCorvaneFrame->setEnabled(false);
    thenAlways(operation, [this, focus] {
        busy = false;
        controls.AddCorvaneFrame->setEnabled(true);
        if (focus && !controls.AddCorvaneFrame->isHidden())
            focus->setFocus();
    });
}

void dlgControlExisting::carryOut() {
    if (controls.AddCorvaneFrame->isHidden() || !controls.AddCorvaneCommand->isEnabled())
        return;
    act([this] { runOperation(); });
}

void dlgControlExisting::runOperation() {
    const QString caption = controls.AddCorvaneFrame->title();
    if (caption == captionOf(Operation::Add)) {
        busyWhile([this] { AddCorvaneButton(); });
    } else if (caption == captionOf(Operation::Edit)) {
        busyWhile([this] { SaveCorvaneChanges(); });
        Wait3Seconds();
    } else if (caption == captionOf(Operation::Control)) {
        busyWhile([this] { ConnectControlButton(); });
    } else if (caption == captionOf(Operation::Delete)) {
        busyWhile([this] { DeleteCorvane(); });
        InitializeKVNControlBlocks();
    }
}

void dlgControlExisting::AddCorvaneButton() {
    if (units.ControlBlockCount == units.KVNControlBlocks.last()) {
        link.messages.ShowMessage("Maximum number of corvanes saved!");
        return;
    }
    showStatus("Setting up save");
    ++units.ControlBlockCount;
    KVNControlBlock &block = units.KVNControlBlocks[units.ControlBlockCount];
    block.Name = typed(controls.Text3->text());
    block.ConnectType = kindText();
    if (block.ConnectType.empty())
        block.ConnectType = SerialType;
    if (block.ConnectType == EtherType) {
        const std::array<std::string, 5> numbers = controls.CntrlIPAddressQuad->entry.numbers();
        for (std::size_t quad = 0; quad < 4; ++quad) {
            if (numbers.at(quad).empty()) {
                link.messages.ShowPlainBox("incomplete ip address can't save to block.");
                return;
            }
        }
        block.IPAddress = joinAddress(numbers);
    }
    if (save())
        showStatus("Added Corvane to Disk");
    showOptions();
}

void dlgControlExisting::SaveCorvaneChanges() {
    KVNControlBlock &block = units.KVNControlBlocks[units.SelectedBlockIndex];
    block.ConnectType = kindText();
    if (block.ConnectType.empty())
        block.ConnectType = SerialType;
    block.IPAddress = joinAddress(controls.CntrlIPAddressQuad->entry.numbers());
    if (save())
        link.messages.ShowMessage("Saved Changes to Disk");
    showOptions();
}

void dlgControlExisting::DeleteCorvane() {
    // A question that is closed unanswered must not count as the yes of an earlier one.
    link.messages.state.YesNoAnswer = false;
    KVNControlBlock &block = units.KVNControlBlocks[units.SelectedBlockIndex];
    link.messages.AskYesNo("Are you sure you want to delete " +
                           shownName(block.Name).toStdString() + " ?");
    if (link.messages.state.YesNoAnswer && !pump.ended()) {
        const KVNControlBlock before = block;
        const bool unsavedBefore = units.UnsavedChanges;
        block = {};
        if (save()) {
            showStatus("Deleted Corvane from Disk");
            Wait3Seconds();
        } else {
            // Still in the file, so still a unit.
            block = before;
            units.UnsavedChanges = unsavedBefore;
        }
    }
    showOptions();
}

void dlgControlExisting::Wait3Seconds() {
    link.state.WaitSeconds = LingerSeconds;
    pump.runFor(link.state.WaitSeconds, [] { return false; });
    controls.StatusLabel->hide();
}

void dlgControlExisting::ConnectControlButton() {
    const bool ether = typed(controls.ControlledbyText->text()) == EtherType;
    thenAlways(
        [this, ether] {
            showStatus("Waiting for Connection.");
            units.WaitingForConnectionFlag = true;
            connectUnit(ether);
            openUnit(ether);
            if (!pump.ended())
                unload();
        },
        [this] {
            units.WaitingForConnectionFlag = false;
            controls.StatusLabel->hide();
        });
}

void dlgControlExisting::connectUnit(bool ether) {
    // Whatever is open belongs to the unit controlled before.
    link.dispatch.CloseLink();
    link.display.refreshAll();
    link.state.IPConnectingFlag = true;
    if (ether) {
        for (int box = 0; box < AddressEntry::BoxCount; ++box) {
            const std::string &text = controls.CntrlIPAddressQuad->entry.text(box);
            link.state.IPAddressQuads.at(static_cast<std::size_t>(box)) =
                text.empty() ? text : decimalText(leadingNumber(text));
        }
        connectDialog.HandleIPOnly();
    } else {
        connectDialog.handleSerialOnly();
    }
    pump.runUntil([this] { return !link.state.IPConnectingFlag; });
}

void dlgControlExisting::openUnit(bool ether) {
    if (pump.ended())
        return;
    showStatus("Waiting for Configuration.");
    const bool linkUp = ether ? link.state.IPLinkOpenFlag : link.state.SerialPortOpen;
    if (!linkUp) {
        controls.StatusLabel->hide();
        return;
    }
    link.configuration.GetParseConfiguration();
    if (link.exchange.ReplyStatus == RecognisedReply) {
        showStatus("Loading Controls.");
        host.controlUnit(units.KVNControlBlocks[units.SelectedBlockIndex].Name);
    } else {
        link.messages.ShowMessage("Unable to get Corvane Configuration");
    }
}

bool dlgControlExisting::eventFilter(QObject *watched, QEvent *event) {
    // Where nothing is picked, the first key picks what is current and does not pass it over.
    auto *list = qobject_cast<QListWidget *>(watched);
    if (list && event->type() == QEvent::KeyPress && list->selectedItems().isEmpty()) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_Home) {
            list->setCurrentRow(list->currentRow());
            return true;
        }
    }
    return Form::eventFilter(watched, event);
}

void dlgControlExisting::keyPressEvent(QKeyEvent *event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool onButton = qobject_cast<QAbstractButton *>(focusWidget()) != nullptr;
    if (enter && !onButton && !event->isAutoRepeat())
        carryOut();
    else
        Form::keyPressEvent(event);
}
