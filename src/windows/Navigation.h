#pragma once

#include <QRect>

#include <cstddef>
#include <optional>
#include <vector>

enum class Direction { Left, Right, Up, Down };

/// Which of `places` an arrow key leads to from `places[from]`. To the left and the right it is the
/// nearest one in the same row, which is where the middle of one lies beside the other. Up and down
/// it is the one for which the way up or down, and the way to the side beyond what stands one above
/// the other, are least together; of equals the one whose left edge is nearest.
/// @param places of any unit, all in the same
/// @returns an index; none where nothing lies that way
std::optional<std::size_t> nextPlace(const std::vector<QRect> &places, std::size_t from,
                                     Direction direction);
