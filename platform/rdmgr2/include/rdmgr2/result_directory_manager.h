#pragma once

#include "rdmgr2/export.h"

#include <gen_helpers2/path.h>

#include <cstdint>
#include <string>

namespace rdmgr2 {

/// Why a pattern of result directories is refused, or a directory was not made. Zero is success, so that a
/// result can be asked like a condition.
enum error_t : int
{
    error_none = 0,            ///< nothing is wrong
    error_empty,               ///< no name at all, or blanks only
    error_no_number,           ///< no '@', so that the second result would find its name taken
    error_several_numbers,     ///< more than one run of '@'
    error_too_many_digits,     ///< a run of more than eight '@'
    error_forbidden_character, ///< one that names must not have
    error_reserved_name,       ///< see isReservedDirectoryName()
    error_too_long,            ///< the name would have more than 255 bytes
    error_not_created          ///< the system refused to make the directory
};

/// A sentence for the user, in the language that is set; empty for error_none. Any thread.
RDMGR2_EXPORT std::string toString(error_t error);

/// Names of result directories, and the directories themselves.
///
/// A pattern is the name of one directory in which one run of '@', of one to eight characters, stands for a
/// running number with at least that many digits: "result_@@@" gives result_001, result_002 and so on, and
/// after result_999 result_1000. The next number is one more than the greatest that is there, so that the
/// order of the names is the order in which the results were made; a number that was freed below it is not
/// used again.
///
/// \code
/// gh2::path_t made;
/// if (const rdmgr2::error_t error = ResultDirectoryManager::createResultDirectory(pattern, folder, made))
///     show(rdmgr2::toString(error));
/// \endcode
///
/// Names are bytes, as everywhere in the file system. Any thread.
class RDMGR2_EXPORT ResultDirectoryManager
{
public:
    static constexpr std::size_t max_digits = 8;

    /// Why a pattern cannot be used; error_none when it can.
    static error_t validateResultDirectoryPattern(const std::string& pattern);

    /// Names that other systems keep for their devices, with any ending and in capitals or not: a result with
    /// such a name could not be copied there.
    static bool isReservedDirectoryName(const std::string& name);

    /// The pattern's name for a number. A pattern without '@' is its own name.
    static std::string fillResultDirectoryPattern(const std::string& pattern, std::uint64_t number);

    /// The name that createResultDirectory() would give a result now. A folder that is not there yet holds no
    /// results. Remembers what it has read of the last folder for as long as that does not change.
    static std::string getNextResultDirectoryName(const std::string& pattern,
                                                  const gen_helpers2::path_t& folder);

    /// Makes the directory of the next result, and the folder for it where that is missing. When others do
    /// the same at the same time each gets a directory of its own.
    /// @param[out] made left alone on an error
    static error_t createResultDirectory(const std::string& pattern, const gen_helpers2::path_t& folder,
                                         gen_helpers2::path_t& made);
};

} // namespace rdmgr2
