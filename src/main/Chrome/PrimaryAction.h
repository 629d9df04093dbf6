#pragma once

namespace orvane {

/// A tab that has a main button: what the menu's "Do It" and the Return key press.
class PrimaryAction
{
public:
    virtual ~PrimaryAction() = default;

    virtual void performPrimaryAction() = 0;
};

} // namespace orvane
