#pragma once

#include "event_entry.h"
#include "line_batch.h"

#include <gen_helpers2/path.h>

#include <functional>
#include <memory>

namespace commondlg3 {

/// A piece of a saved log: lines, behind the record of their entry when they are its first.
struct loaded_piece_t
{
    std::unique_ptr<gen_helpers2::variant_bag_t> record;
    std::unique_ptr<line_batch_t> lines;
};

/// Reads a saved log on a worker and hands it over on the GUI thread, piece by piece.
class file_loader_t
{
public:
    /// @param take gets each piece
    /// @param ended is called when all of it was read, or as much as could be: with false when it broke off
    /// and could not be kept aside
    file_loader_t(const gen_helpers2::path_t& file, std::function<void(loaded_piece_t)> take,
                  std::function<void(bool kept)> ended);
    /// Nothing is called any more.
    ~file_loader_t();

    const gen_helpers2::path_t& get_file() const { return m_file; }

    struct shared_t;

private:
    gen_helpers2::path_t m_file;
    std::shared_ptr<shared_t> m_shared;
};

} // namespace commondlg3
