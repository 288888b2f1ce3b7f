#pragma once

#include "PanelLayout.h"
#include "PanelSheet.h"
#include "Window.h"

#include <QScrollArea>

#include <array>
#include <functional>
#include <optional>
#include <vector>

/// The window of the routing panel. It opens as large as the screen has room for, up to twice its
/// design size, and scales as a whole, text included. Too small to be read, it scrolls.
class PanelWindow : public Window {
public:
    /// @param openHelp opens a help window, 0 to 2
    PanelWindow(KVN32x32Audio &panelForm, const PanelView &panelView,
                std::function<void(std::size_t)> openHelp);

protected:
    void refreshRest() override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Placed {
        QWidget *widget;
        TwipRect place;
        Growth growth = Growth::None;
        Weight weight = Weight::Normal;
        QString laidOutText{}; ///< of a label that grows with its text
    };

    void buildMenu(std::function<void(std::size_t)> openHelp);
    void buildSlots(const SlotArray &array);
    void buildSingle(const SingleControl &single);
    void buildStatus();
    QWidget *makeControl(ControlKind kind, const QString &name, const Control &control);
    void orderTabs();
    void nameSlots(Side side, const Table<int, 32> &shownNumbers, std::array<int, 33> &named);
    void fitScreen();
    void fit(const QMargins &frame);
    void fitOwnFrame();
    void layOut();
    void place(Placed &placed) const;
    void showName();
    void showTip(const QPoint &pointer);
    [[nodiscard]] static bool isOnCard(const Placed &placed);
    [[nodiscard]] QRect tipRoom(const Placed &placed) const;
    [[nodiscard]] QPoint tipPlace(const Placed &placed, const QPoint &pointer,
                                  const QSize &tip) const;
    [[nodiscard]] QFont fittingFont() const;

    KVN32x32Audio &panel;
    const PanelView &view;
    PanelSheet *sheet;
    QScrollArea *scroller = nullptr;
    std::optional<QMargins> fittedFor; ///< the frame
    std::vector<Placed> placedControls;
    std::array<std::array<QWidget *, 33>, SlotArrays.size()> slotWidgets{};
    std::array<int, 33> namedInputs{};
    std::array<int, 33> namedOutputs{};
};
