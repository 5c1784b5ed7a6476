#ifndef Quillmere_plugins_console_RowPositions_h
#define Quillmere_plugins_console_RowPositions_h

#include <cstddef>

namespace QuillmereEngine {

/**
@brief Positions of rows of equal height, each the one before plus the height

Gives exactly what adding up in single precision gives, rounding included, so that a row that's
reached by a jump stands where it would if all rows before it had been visited. As long as all sums
are whole numbers that a float can hold, a position takes constant time; otherwise the additions
are made, once for all positions asked for.
*/
class RowPositions {
public:
    /**
    @param origin   Position of row 0 in pixels
    @param height   Expected to be positive
    */
    explicit RowPositions(float origin, float height);

    /** @brief Position of a row. Rows are expected to be asked for in ascending order. */
    float position(std::size_t row);

    /** @brief First of @p rowCount rows that isn't above @p y, @p rowCount if all are */
    std::size_t firstNotAbove(float y, std::size_t rowCount) const;

private:
    bool isExact(std::size_t row) const;
    double sum(std::size_t row) const;

    float _origin;
    float _height;
    bool _isWhole;
    /* As far as the additions have been made */
    std::size_t _row = 0;
    float _position;
};

}

#endif
