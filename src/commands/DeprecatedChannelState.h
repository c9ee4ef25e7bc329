#pragma once

/// A flag that nothing in the framework reads. Kept for hosts that still set it.
class DeprecatedChannelState
{
public:
    bool enabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }

private:
    bool m_enabled = false;
};
