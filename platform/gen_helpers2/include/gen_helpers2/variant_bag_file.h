/// @file
/// The file form of bags: XML, to be read and, if need be, mended by people.
///
/// \code
/// <bag version="1">
/// <string name="title">Open</string>
/// <child name="record"><int name="size">5</int></child>
/// </bag>
/// \endcode
///
/// The elements of values are empty, bool, int, int64, double and string. Every name and text survives,
/// whatever its bytes (see escape_bytes() in strings.h). Reading and writing go through the file as a stream:
/// a document tree would need many times the size of the text. Reading accepts no document type and no
/// entities of one's own, and no unknown elements or attributes; any such file is "gh2::error::Damaged". A
/// file that cannot be read is "gh2::error::Io". After an error the bag given for the result is as it was.
#pragma once

#include "gen_helpers2/error_code.h"
#include "gen_helpers2/export.h"
#include "gen_helpers2/file.h"
#include "gen_helpers2/path.h"
#include "gen_helpers2/variant_bag.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace gen_helpers2 {

/// Deepest nesting of children in a file; saving a deeper bag is an error as well, as it could not be loaded.
constexpr std::size_t max_bag_nesting = 1000;

/// A bag whose file would be larger than `max_bytes` is an error, as loading would refuse it.
[[nodiscard]] GEN_HELPERS2_EXPORT error_code_t save_variant_bag(
    const variant_bag_t& bag, const path_t& file, std::size_t max_bytes = default_max_file_bytes);
/// The same over a file that could not be understood, which is kept as `<file>.damaged`; on an error it stays
/// where it is.
/// @since 3.1
[[nodiscard]] GEN_HELPERS2_EXPORT error_code_t save_over_damaged_file(const variant_bag_t& bag,
                                                                      const path_t& file);
/// Reads a bag; a file that is not there is an error as well.
[[nodiscard]] GEN_HELPERS2_EXPORT error_code_t
load_variant_bag(const path_t& file, variant_bag_t& bag, std::size_t max_bytes = default_max_file_bytes);

/// What a file of the bag would hold.
[[nodiscard]] GEN_HELPERS2_EXPORT error_code_t save_to_string(const variant_bag_t& bag, std::string& text);
/// The way back.
[[nodiscard]] GEN_HELPERS2_EXPORT error_code_t load_from_string(std::string_view text, variant_bag_t& bag);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
