#pragma once

#include "entries.h"

#include <gen_helpers2/path.h>

namespace gallery {

/// The entry's source among those that are installed with the gallery.
gen_helpers2::path_t source_of(const entry_t& entry);

/// Opens it in the user's editor. Where that cannot be, the user is told over `parent`, with the file's path;
/// JSON lines tell which it was.
void show_code(const entry_t& entry, wxWindow* parent);

} // namespace gallery
