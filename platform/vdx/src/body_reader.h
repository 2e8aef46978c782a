#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vdxcfrw7 {

/// How a piece of a body's text looks.
struct body_style_t
{
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool struck = false;
    bool fixed = false; ///< letters of one width
    bool link = false;
    int size = 0;       ///< in steps above the ordinary
    int raised = 0;     ///< 1 above the line, -1 below
    std::string target; ///< of a link
    std::string colour; ///< a name or #rrggbb; empty: the ordinary

    bool operator==(const body_style_t& other) const;
};

struct body_span_t
{
    std::size_t begin;
    std::size_t end; ///< in bytes of the paragraph's text
    body_style_t style;
};

enum class body_align_t
{
    leading, ///< the side of the window's language
    centre,
    trailing,
    own ///< the side at which its text begins to be read: code keeps its indentation
};

struct body_paragraph_t
{
    std::string text; ///< UTF-8; lines end with line feeds
    std::vector<body_span_t> spans;
    std::string bullet;
    body_align_t align = body_align_t::leading;
    int indent = 0;      ///< in levels
    int space_above = 0; ///< in half lines
    bool is_rule = false;
};

struct body_table_t;

/// A paragraph, or a table with the indentation and space of one.
struct body_item_t
{
    body_paragraph_t paragraph;
    std::unique_ptr<body_table_t> table;
};

using body_flow_t = std::vector<body_item_t>;

struct body_cell_t
{
    body_flow_t flow;
};

struct body_table_t
{
    std::vector<std::vector<body_cell_t>> rows;
    bool border = false;
};

/// What a message body consists of. Nothing that it names is ever opened.
body_flow_t read_body(std::string_view html);

} // namespace vdxcfrw7
