#pragma once

#include "automation/VideoWork.h"

#include <qcoro/qcorotask.h>

#include <stdexcept>

namespace orvane {

/// The website's visualizer as a run sees it: a page that renders in real time, and whose pictures freeze while it is
/// not on screen.
class SiteVisualizer
{
public:
    /// The page is not on screen; the track can be tried again once it is.
    struct Hidden : std::runtime_error
    {
        using std::runtime_error::runtime_error;
    };

    virtual ~SiteVisualizer() = default;

    /// Whether the page is on screen.
    virtual bool canRender() const = 0;

    /// Comes back when the video is whole. Throws Hidden, and for every other failure what says why.
    virtual QCoro::Task<> render(VideoWork::Order order) = 0;
};

} // namespace orvane
