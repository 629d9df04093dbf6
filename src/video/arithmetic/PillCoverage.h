#pragma once

#include <span>
#include <vector>

namespace orvane::Video {

/// A rectangle with round corners, in pixels, y downwards. `radius` is at most half of the shorter side.
struct Pill
{
    double left = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
    double radius = 0.0;

    bool operator==(const Pill&) const = default;
};

/// How much of each pixel a pill covers: the exact area, by the integral of the circle. Memory grows with the widest
/// pill and is kept. One thread at a time.
class PillCoverage
{
public:
    /// Starts with the rows of `pill`, which is wider and higher than nothing.
    void set(const Pill& pill);

    /// The first pixel column that the pill touches, and how many it does.
    int firstColumn() const { return firstColumn_; }

    int columnCount() const { return int(edges_.size()) - 1; }

    /// Adds the coverage of the pixels of `row`, from 0 to 1, to `line`, one value for each column that the pill
    /// touches. Quickest where rows are asked for one after the other.
    void addRow(int row, std::span<float> line);

private:
    /// A distance from the pill's middle to an edge between pixels, held to the pill.
    struct Edge
    {
        double sign = 1.0;
        double distance = 0.0;
        /// How far it reaches into the corner's square; not above 0 in the straight part.
        double intoCorner = 0.0;
        /// The circle's area from its middle to there.
        double arc = 0.0;
    };

    void placeEdges();
    Edge edgeAt(double offset, double half) const;
    void areasTo(int row, std::vector<double>& areas) const;
    double arcArea(double distance) const;

    Pill pill_;
    int firstColumn_ = 0;
    std::vector<Edge> edges_;
    /// The areas between the pill's middle and each edge, above `row_` and below it.
    std::vector<double> above_;
    std::vector<double> below_;
    int row_ = 0;
};

} // namespace orvane::Video
