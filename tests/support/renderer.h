#pragma once

#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

/// Keeps Qt's software renderer from ending with the last window that is closed. The images that
/// it has drawn are given back only when it draws again, and not at its end.
class Renderer
{
public:
    Renderer()
    {
        m_window.setFlag(Qt::WindowDoesNotAcceptFocus);
        m_window.show();
        m_window.hide();
    }

    ~Renderer()
    {
        // What Qt keeps of images for the next one who wants to see them.
        m_window.releaseResources();
        QSignalSpy drawn(&m_window, &QQuickWindow::frameSwapped);
        m_window.show();
        drawn.wait();
    }

    Renderer(const Renderer &) = delete;
    Renderer &operator=(const Renderer &) = delete;

private:
    QQuickWindow m_window;
};
