#pragma once

#include "log_selection.h"

#include <string>
#include <utility>

namespace vdxcfrw7 {

/// The next place of a folded text behind `start`, or the one before it, going round the log; not set
/// when there is none. Hidden lines are passed over.
std::pair<text_place_t, text_place_t> find_text(const CEventLog& log, const log_selection_t& texts,
                                                const text_place_t& start, const std::string& needle,
                                                bool forward);

} // namespace vdxcfrw7
