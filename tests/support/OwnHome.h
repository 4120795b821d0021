#pragma once

#include <QTemporaryDir>

namespace health::test {

// Private folders for a test program, set before its application object exists, so that tests leave the user's folders
// alone. A test with a display sets its platform; the others run offscreen.
class OwnHome {
public:
    OwnHome()
    {
        qputenv("XDG_DATA_HOME", m_folder.path().toUtf8());
        qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        // Tests cause more refusals a minute than the limit allows; docs/protocol.md, Limits.
        qputenv("mev_patience", "100000000");
    }

private:
    QTemporaryDir m_folder;
};

}
