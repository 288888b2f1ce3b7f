#include "Navigation.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

bool inSameRow(const QRect &one, const QRect &other) {
    const auto beside = [](const QRect &place, const QRect &reference) {
        const int middle = place.center().y();
        return middle >= reference.top() && middle <= reference.bottom();
    };
    return beside(one, other) || beside(other, one);
}

/// How far `to` lies from `from` in a direction, by the middles; negative behind it.
int wayAlong(const QRect &from, const QRect &to, Direction direction) {
    const QPoint way = to.center() - from.center();
    switch (direction) {
    case Direction::Left:
        return -way.x();
    case Direction::Right:
        return way.x();
    case Direction::Up:
        return -way.y();
    case Direction::Down:
        break;
    }
    return way.y();
}

int gapAside(const QRect &one, const QRect &other) {
    return std::max({0, one.left() - other.right(), other.left() - one.right()});
}

} // namespace

std::optional<std::size_t> nextPlace(const std::vector<QRect> &places, std::size_t from,
                                     Direction direction) {
    const QRect &start = places.at(from);
    const bool alongRow = direction == Direction::Left || direction == Direction::Right;
    std::optional<std::size_t> best;
    std::pair<int, int> bestWay;
    for (std::size_t index = 0; index < places.size(); ++index) {
        const QRect &place = places[index];
        const int along = wayAlong(start, place, direction);
        if (along <= 0 || inSameRow(start, place) != alongRow)
            continue;
        const std::pair way(along + (alongRow ? 0 : gapAside(start, place)),
                            std::abs(start.left() - place.left()));
        if (best && way >= bestWay)
            continue;
        best = index;
        bestWay = way;
    }
    return best;
}
