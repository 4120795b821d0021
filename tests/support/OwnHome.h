#pragma once

#include <QTemporaryDir>

namespace health::test {

// Folders of its own for a test program, before its application object is made: nothing of the tests reaches the
// user's. A test on a screen names its platform; the others need none.
class OwnHome {
public:
    OwnHome()
    {
        qputenv("XDG_DATA_HOME", m_folder.path().toUtf8());
        qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        // Tests are refused more often in a minute than people are; docs/protocol.md, Limits.
        qputenv("mev_patience", "100000000");
    }

private:
    QTemporaryDir m_folder;
};

}
