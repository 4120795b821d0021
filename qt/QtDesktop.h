#pragma once

#include "platform/Desktop.h"

#include <QPoint>
#include <QString>

#include <functional>
#include <optional>

namespace health {

// The user's desktop by way of Qt. One per process, made after the application object.
class QtDesktop : public Desktop {
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

    // Where the next menu pops up, in global coordinates.
    void setPopUpPlace(QPoint place) { m_popUpPlace = place; }
    // An entry of the view's own at the end of the next menu; `isUsable` is asked when the menu opens.
    void offerWithNextMenu(QString caption, std::function<void()> work, std::function<bool()> isUsable);

private:
    struct OfferedEntry {
        QString caption;
        std::function<void()> work;
        std::function<bool()> isUsable;
    };

    std::function<void()> askMenu(Menu& menu, const std::optional<OfferedEntry>& offered);

    bool m_hourglass = false;
    QPoint m_popUpPlace;
    std::optional<OfferedEntry> m_offered;
};

}
