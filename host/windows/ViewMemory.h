#pragma once

#include "api/Text.h"

#include <QSettings>
#include <QString>

namespace health {

// How the panels are arranged (ComponentInstance::viewState), by their positions in the window, in the user's settings.
// When no user is present, it remembers nothing: pictures must not depend on earlier sessions.
class ViewMemory {
public:
    explicit ViewMemory(bool isUsed)
        : m_isUsed(isUsed)
    {
    }

    // Empty if nothing is remembered.
    Text viewAt(std::size_t position) const
    {
        return m_isUsed ? QSettings().value(keyOf(position)).toString().toStdWString() : Text();
    }

    void keep(std::size_t position, const Text& view)
    {
        if (m_isUsed && !view.empty())
            QSettings().setValue(keyOf(position), QString::fromStdWString(view));
    }

private:
    static QString keyOf(std::size_t position) { return QStringLiteral("panels/%1").arg(position + 1); }

    bool m_isUsed;
};

}
