#pragma once

namespace commondlg3 {

constexpr char editor_blank_line[] = "\n"; ///< nothing to read, but as high as a line

} // namespace commondlg3
