#pragma once

#include <gtk/gtk.h>

namespace wx_helpers1 {

/// A handler of a signal of a widget, for as long as it lives; the widget may be destroyed before.
class widget_handler_t
{
public:
    widget_handler_t(GtkWidget* widget, const char* signal, GCallback handler, gpointer data)
        : m_widget(GTK_WIDGET(g_object_ref(widget))),
          m_handler(g_signal_connect(widget, signal, handler, data))
    {
    }
    ~widget_handler_t()
    {
        disconnect();
        g_object_unref(m_widget);
    }
    widget_handler_t(const widget_handler_t&) = delete;
    widget_handler_t& operator=(const widget_handler_t&) = delete;

    void disconnect()
    {
        if (g_signal_handler_is_connected(m_widget, m_handler))
            g_signal_handler_disconnect(m_widget, m_handler);
    }
    GtkWidget* get_widget() const { return m_widget; }

private:
    GtkWidget* m_widget;
    gulong m_handler;
};

} // namespace wx_helpers1
