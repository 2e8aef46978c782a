#pragma once

#include <chrono>
#include <functional>

namespace commondlg3 {

/// Looks at the disk on a thread of its own, because a folder of the network may hang for minutes, and waits
/// for it for `patience` at most.
///
/// @param look owns what it needs and touches no window
/// @param later when the look takes longer: run on the GUI thread once it has ended. It is made and run there,
/// but where no more tasks are taken it ends on the looking thread.
/// @return whether the look has ended; false also when it could not begin, because too many others hang: then
/// `later` is never run
bool ask_disk(std::function<void()> look, std::chrono::milliseconds patience,
              std::function<void()> later = {});

enum class asked_t
{
    answered,
    later, ///< the look goes on
    never  ///< it could not begin
};
/// The same for callers that ask again when the look could not begin.
asked_t put_to_disk(std::function<void()> look, std::chrono::milliseconds patience,
                    std::function<void()> later);

/// For what a user waits for knowingly.
constexpr std::chrono::milliseconds patience_on_ok{2000};
/// For programs that are looked for in the folders of PATH, when a page opens or a row is chosen.
constexpr std::chrono::milliseconds patience_with_path{500};
/// For what is asked at every key: few, as what was typed shows only afterwards; a disk that
/// answers does so in less than one.
constexpr std::chrono::milliseconds patience_while_typing{15};

} // namespace commondlg3
