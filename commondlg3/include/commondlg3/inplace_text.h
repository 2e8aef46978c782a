/// @file
/// Logs as files that people and other programs read.
#pragma once

#include <functional>

namespace commondlg3 {

/// The forms in which a log is written for other programs; UTF-8 in all of them.
/// @since 3.1
enum class text_format_t
{
    /// For each entry its caption and message, and its lines as they were said; an empty line between entries.
    plain,
    /// A page for browsers that needs nothing else, light or dark as its reader has it. Bytes that are no UTF-8
    /// show as U+FFFD, and what is for terminals is left out.
    html,
    /// One JSON object a line. First of each entry
    ///
    ///     {"entry":0,"caption":"Reading","message":"All files."}
    ///
    /// and then for each of its lines
    ///
    ///     {"entry":0,"caption":"Reading","severity":"error","time":"2026-03-01T09:05:07.250+01:00","text":"a"}
    ///
    /// with "critical", "error", "warning", "debug" or "information", and "count" when it was said several times
    /// in a row. "time" is there where it is asked for and known. Nothing is lost: where a text holds bytes that
    /// are no UTF-8, the object has "escaped":true, and in its texts `\xHH` stands for the byte HH (and `\x5c`
    /// for each backslash).
    json_lines
};

/// How a log is written as a text.
/// @since 3.1
struct text_options_t
{
    /// Before each line when it was said: the local time with its offset as in ISO 8601, to the millisecond.
    bool times = false;
    /// Leaves out the lines that the log's filter hides.
    bool only_shown = false;
    /// Called on the worker's thread now and then with how much is written, from 0 to 1; false gives it up, and
    /// the file is as it was. May be empty.
    std::function<bool(double)> goes_on;
};

} // namespace commondlg3
