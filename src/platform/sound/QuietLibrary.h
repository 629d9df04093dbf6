#pragma once

namespace orvane {

/// Turns the decoding library's own messages off: what it has to say comes as errors.
void silenceLibrary();

} // namespace orvane
