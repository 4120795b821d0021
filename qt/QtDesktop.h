#pragma once

#include "qt/ViewDesktop.h"

#include <vector>

namespace health {

// The user's desktop, implemented with Qt. One per process, created after the application object.
class QtDesktop : public ViewDesktop {
public:
    QtDesktop() = default;
    ~QtDesktop() override;

    BoxAnswer messageBox(TextView text, int style, TextView title) override;
    void setPointer(Pointer pointer) override;
    void processPendingEvents() override;
    void sendEditMessage(EditHandle edit, int message, long first, const int* value) override;
    Moment now() const override;
    void load(Form& form) override;
    void unload(Form& form) override;
    void showModal(Form& form) override;
    void popUp(Menu& menu) override;
    void setPopUpPlace(QPoint place) override
    {
        m_popUpPlace = place;
        m_offered.clear();
    }
    void offerWithNextMenu(QString caption, std::function<void()> work, std::function<bool()> isUsable) override;

private:
    struct OfferedEntry {
        QString caption;
        std::function<void()> work;
        std::function<bool()> isUsable;
    };

    std::function<void()> askMenu(Menu& menu, const std::vector<OfferedEntry>& offered);

    bool m_hourglass = false;
    QPoint m_popUpPlace;
    std::vector<OfferedEntry> m_offered;
};

}
