#pragma once

#include <wx/dcgraph.h>
#include <wx/dcmemory.h>

#include <unordered_map>

namespace vdxcfrw7 {

/// A device context for measuring words, which remembers those it has measured: laying a body out asks for
/// each of its words, and shaping one takes longer than everything else about it. It draws nothing.
class word_dc_t : public wxDC
{
public:
    explicit word_dc_t(const wxMemoryDC& dc);

private:
    class impl_t;
};

} // namespace vdxcfrw7
