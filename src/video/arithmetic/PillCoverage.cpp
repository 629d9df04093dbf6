#include "video/arithmetic/PillCoverage.h"

#include <algorithm>
#include <cmath>

namespace orvane::Video {

void PillCoverage::set(const Pill& pill)
{
    const bool keepsColumns =
        !edges_.empty() && pill.left == pill_.left && pill.width == pill_.width && pill.radius == pill_.radius;
    pill_ = pill;
    if (!keepsColumns)
        placeEdges();
    row_ = int(std::floor(pill.top)) - 1;
    areasTo(row_ + 1, below_);
}

void PillCoverage::placeEdges()
{
    firstColumn_ = int(std::floor(pill_.left));
    const int end = int(std::ceil(pill_.left + pill_.width));
    edges_.resize(std::size_t(end - firstColumn_) + 1);
    above_.resize(edges_.size());
    below_.resize(edges_.size());
    const double middle = pill_.left + pill_.width / 2.0;
    for (std::size_t index = 0; index < edges_.size(); ++index)
        edges_[index] = edgeAt(firstColumn_ + double(index) - middle, pill_.width / 2.0);
}

PillCoverage::Edge PillCoverage::edgeAt(double offset, double half) const
{
    Edge edge{.sign = offset < 0.0 ? -1.0 : 1.0, .distance = std::min(std::abs(offset), half)};
    edge.intoCorner = edge.distance - (half - pill_.radius);
    edge.arc = edge.intoCorner > 0.0 ? arcArea(edge.intoCorner) : 0.0;
    return edge;
}

/// The area under a quarter of the corner's circle, from its middle to `distance`.
double PillCoverage::arcArea(double distance) const
{
    const double radius = pill_.radius;
    const double held = std::min(distance, radius);
    return 0.5 * (held * std::sqrt(radius * radius - held * held) + radius * radius * std::asin(held / radius));
}

void PillCoverage::areasTo(int row, std::vector<double>& areas) const
{
    const double middle = pill_.top + pill_.height / 2.0;
    const Edge across = edgeAt(row - middle, pill_.height / 2.0);
    const double radius = pill_.radius;
    const double height = across.intoCorner;
    const double reach = height > 0.0 ? std::sqrt(std::max(radius * radius - height * height, 0.0)) : radius;
    const double reachArc = height > 0.0 ? arcArea(reach) : 0.0;
    for (std::size_t index = 0; index < edges_.size(); ++index) {
        const Edge& edge = edges_[index];
        double area = edge.distance * across.distance;
        if (height > 0.0 && edge.intoCorner > reach)
            area += reach * height + edge.arc - reachArc - edge.intoCorner * height;
        areas[index] = edge.sign * across.sign * area;
    }
}

void PillCoverage::addRow(int row, std::span<float> line)
{
    if (row != row_ + 1)
        areasTo(row, below_);
    std::swap(above_, below_);
    areasTo(row + 1, below_);
    row_ = row;
    for (std::size_t index = 0; index + 1 < edges_.size(); ++index)
        line[index] += float(below_[index + 1] - below_[index] - above_[index + 1] + above_[index]);
}

} // namespace orvane::Video
