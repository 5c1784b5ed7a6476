#include "plugins/console/RowPositions.h"

#include <algorithm>
#include <cmath>

namespace QuillmereEngine {

namespace {

/* Up to here a float holds every whole number, and so does each sum on the way */
constexpr double MaxWhole = 1 << 24;

bool isWholeNumber(const float value) {
    return std::abs(value) <= float(MaxWhole) && value == std::floor(value);
}

}

RowPositions::RowPositions(const float origin, const float height):
    _origin{origin},
    _height{height},
    _isWhole{isWholeNumber(origin) && isWholeNumber(height)},
    _position{origin} {}

double RowPositions::sum(const std::size_t row) const {
    return double(_origin) + double(row) * double(_height);
}

bool RowPositions::isExact(const std::size_t row) const { return _isWhole && sum(row) <= MaxWhole; }

float RowPositions::position(const std::size_t row) {
    if(isExact(row))
        return float(sum(row));
    for(; _row < row; ++_row)
        _position += _height;
    return _position;
}

std::size_t RowPositions::firstNotAbove(const float y, const std::size_t rowCount) const {
    RowPositions positions{_origin, _height};
    std::size_t row = 0;
    if(isExact(rowCount) && y > _origin) {
        const double estimate = std::ceil((double(y) - double(_origin)) / double(_height));
        row = std::size_t(std::min(estimate, double(rowCount)));
        /* The quotient is rounded, so it may be one row off */
        row -= row ? 1 : 0;
    }
    while(row != rowCount && positions.position(row) < y)
        ++row;
    return row;
}

}
