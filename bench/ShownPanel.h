// The panel in a window, as the benches drive it.
#pragma once

#include "control/kalmevRepHistCtrl.h"
#include "qt/PanelView.h"
#include "qt/QtDesktop.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>

#include <memory>

namespace health {

struct ShownPanel {
    explicit ShownPanel(Host& host)
        : control(shared, host)
    {
        control.UserControl_Initialize();
        view = std::make_unique<PanelView>(control, desktop);
        view->resize(1000, 700);
        view->show();
        QApplication::processEvents();
    }
    ~ShownPanel() { control.UserControl_Terminate(); }

    void paint()
    {
        QImage image(view->size(), QImage::Format_ARGB32_Premultiplied);
        view->render(&image);
    }

    QtDesktop desktop;
    modShared shared { desktop };
    kalmevRepHistCtrl control;
    std::unique_ptr<PanelView> view;
};

// How long some work takes.
template<typename Work>
double milliseconds(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

}
