/// @file
/// How long-running work reports in words.
#pragma once

namespace msngr2 {

/// What a line is about, as a set of bits. A line without any bit is plain information.
enum ESeverity : int
{
    sev_none = 0,     ///< plain information
    sev_status = 1,   ///< what is being done now: replaces the status line before it and is not kept
    sev_warning = 2,  ///< something may need attention
    sev_error = 4,    ///< something could not be done
    sev_critical = 8, ///< the whole work could not be done
    sev_debug = 16,   ///< for the makers of the product
    sev_info = 32     ///< the same, said so
};

constexpr ESeverity operator|(ESeverity a, ESeverity b)
{
    return static_cast<ESeverity>(static_cast<int>(a) | static_cast<int>(b));
}

/// Takes lines of text with a severity. Whoever hands one out says which threads may call it and how long it
/// lives.
class IMessenger
{
public:
    /// @param text UTF-8, copied before the call returns; null says nothing
    virtual void say(ESeverity severity, const char* text) = 0;

protected:
    ~IMessenger() = default;
};

} // namespace msngr2
