"""What the toolkit alone does wrong, each with the reason why it is no fault of ours."""
import re

KNOWN = [
    # Its chooser of emoji (Ctrl+.) complains when its window closes before it was filled.
    r"g_variant_unref: assertion 'value != NULL'",
    # What another program puts on the clipboard and calls text is not always text: the toolkit says so, and pastes
    # nothing, or asks for another form.
    r"Error converting from text/plain;charset=utf-8 to UTF-8|Error converting selection from UTF8_STRING|"
    r"Error converting to UTF-8 from 'ANSI_X3.4-1968'",
    # A menu that is opened while another program holds the pointer takes the keys before it is there; ours are cancelled.
    r"gdk_window_get_window_type: assertion 'GDK_IS_WINDOW \(window\)' failed",
    # A key that comes to its file chooser while what has the focus there is just being taken away.
    r"gtk_widget_event: assertion 'WIDGET_REALIZED_FOR_EVENT \(widget, event\)' failed",
    # Its file chooser completes what is typed after its folder has changed, and has headers of columns to click while it
    # has no list.
    r"gtk_tree_model_get_iter_first: assertion 'GTK_IS_TREE_MODEL \(tree_model\)' failed",
    r"gtk_tree_sortable_\w+: assertion 'GTK_IS_TREE_SORTABLE \(sortable\)' failed",
    # wxPizza::scroll() moves the hidden children of a scrolled panel along with the others.
    r"gtk_widget_set_allocation: assertion '_gtk_widget_get_visible \(widget\) \|\| _gtk_widget_is_toplevel \(widget\)'",
    # What is squeezed in a window that no window manager keeps from being made smaller than it may be: the text of a
    # button or field has no room left.
    r"Negative content (width|height) -\d+ \(allocation \d+, extents \d+x\d+\) while allocating gadget",
    # The same of a list, which becomes lower than the ends of its scroll bar.
    r"gtk_widget_get_preferred_width_for_height: assertion 'height >= 0' failed",
    r"attempt to allocate widget with width -?\d+ and height -?\d+",
    r"gtk_widget_get_preferred_height_for_width: assertion 'width >= 0' failed",
    # A field for a number that is shown while the font grows: it has the room that it asked for before.
    r"gtk_box_gadget_distribute: assertion 'size >= 0' failed in GtkSpinButton",
    # What an audit finds of the main window, when the window that it is to look at was silenced: once the monkey has
    # made it 3000 pixels wide.
    r"^beyond_screen frame:",
    # A widget that stops moving (a spinner, a bar that glides) while its window is drawn for the first time.
    r"g_signal_handler_disconnect: assertion 'handler_id > 0' failed",
    r"gdk_frame_clock_idle_end_updating: assertion 'priv->updating_count > 0' failed",
    # From 3.2.10 on wxTextEntry takes a handler away again, as it ends, that was gone after its last key.
    r"instance '0x[0-9a-f]+' has no handler with id",
    # A field to search in is drawn before the cross has been given room that comes with its first letter.
    r"Drawing a gadget with negative dimensions\. .*\(node image owner GtkSearchEntry\)",
    # A list whose row is dragged while another program has taken the pointer already: it takes the drag for begun. Programs
    # without anything of ours complain too.
    r"g_object_set_data_full: assertion 'G_IS_OBJECT \(object\)' failed",
    # A field that is empty but for what an input method has begun, and has a hint that is shorter than that, when it loses
    # the focus: it looks for the place of the cursor in the hint. Programs without anything of ours complain too.
    r"pango_layout_get_cursor_pos: assertion 'index >= 0 && index <= layout->length' failed",
    # The menu of a text waits for what another program has on the clipboard, for half a minute at most: what is
    # closed meanwhile has gone, but what it was called from has not returned.
    r"^gtk_clipboard_wait_is_rich_text_available \(\)",
    # The arrow keys in a field with a line of 10,000 letters: it measures the line up to each of them.
    r"^pango_layout_move_cursor_visually \(\)",
]
is_known = re.compile("|".join(KNOWN)).search
