#pragma once

namespace orvane {

/// Tells screen readers what the painted controls are and hold. Called once by Theme::apply.
void installChromeAccessibility();

} // namespace orvane
