#pragma once

#include <QIcon>
#include <QIconEngine>

#include <functional>
#include <optional>
#include <utility>

/// The body of an icon that is made when it is first asked for anything: an icon that nothing shows
/// costs nothing.
class LateIcon : public QIconEngine {
public:
    explicit LateIcon(std::function<QIcon()> makeIcon) : make(std::move(makeIcon)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode,
               QIcon::State state) override {
        icon().paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        return icon().pixmap(size, 1.0, mode, state);
    }
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override {
        return icon().pixmap(size / scale, scale, mode, state);
    }
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        return icon().actualSize(size, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
        return icon().availableSizes(mode, state);
    }
    [[nodiscard]] QIconEngine *clone() const override { return new LateIcon(*this); }

private:
    QIcon &icon() {
        if (!made)
            made = make();
        return *made;
    }

    std::function<QIcon()> make;
    std::optional<QIcon> made;
};
