#pragma once

class wxStaticText;

namespace wx_helpers1 {

/// Keeps the toolkit from making a text the label of whatever control follows it. GUI thread.
void keep_label_relations(wxStaticText* label);

} // namespace wx_helpers1
