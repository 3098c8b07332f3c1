#include "main/desktop.h"

#include "app/identity.h"
#include "ui/icon/program_icon.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QPalette>
#include <QPlatformSurfaceEvent>
#include <QQuickWindow>

#include <cstdlib>
#include <string_view>

#include <xcb/xcb.h>

namespace {

/// Tells X11's window managers that the program is dark. GNOME and its relatives draw a dark title bar then.
class DarkTitleBars : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* const window = qobject_cast<QWindow*>(watched);
        if (window != nullptr && event->type() == QEvent::PlatformSurface
            && static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType()
                   == QPlatformSurfaceEvent::SurfaceCreated)
            setProperty(static_cast<xcb_window_t>(window->winId()), "_GTK_THEME_VARIANT", "dark");
        return false;
    }

private:
    static void setProperty(xcb_window_t window, std::string_view name, std::string_view value) {
        xcb_connection_t* const server =
            qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
        const auto atom = [server](std::string_view text) {
            xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(
                server, xcb_intern_atom(server, 0, static_cast<uint16_t>(text.size()), text.data()), nullptr);
            const xcb_atom_t found = reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
            std::free(reply);
            return found;
        };
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, window, atom(name), atom("UTF8_STRING"), 8,
                            static_cast<uint32_t>(value.size()), value.data());
    }
};

/// Returns the colors of what Qt draws itself: the folder chooser, and title bars on Wayland if the desktop
/// draws none. All other colors are computed from that of buttons.
QPalette darkPalette() {
    QPalette palette(QColor(0x1a, 0x22, 0x33));
    palette.setColor(QPalette::Disabled, QPalette::WindowText,
                     QColor(0x8a, 0x93, 0xa6)); // inactive title bar
    return palette;
}

/// Returns true if OpenGL can draw. Qt Quick requires version 2 and otherwise ends the program.
bool hasOpenGL() {
    QOpenGLContext context;
    if (!context.create())
        return false;
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!context.makeCurrent(&surface))
        return false;
    const int version = context.format().majorVersion();
    context.doneCurrent();
    return version >= 2;
}

} // namespace

void Desktop::setUp() {
    QGuiApplication::setDesktopFileName(Identity::identifier());
    QGuiApplication::setWindowIcon(programIcon());
    QGuiApplication::setPalette(darkPalette());
    if (qGuiApp->nativeInterface<QNativeInterface::QX11Application>() != nullptr)
        qGuiApp->installEventFilter(new DarkTitleBars(qGuiApp));
    if (!hasOpenGL())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

bool Desktop::isMac() {
    return false;
}

void Desktop::bringToFront() {
    // Activating a window is enough.
}
