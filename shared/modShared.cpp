#include "shared/modShared.h"

#include "shared/EditShortcuts.h"
#include "shared/frmDummy.h"
#include "shared/modConst.h"
#include "text/Conversions.h"

#include <limits>

namespace health {

modShared::modShared(Desktop& desktop)
    : Messages(desktop)
    , ErrorReports(desktop, *this, *this)
    , ServerCalls(desktop, *this, *this, *this)
    , Security(*this, *this)
    , UserParameters(*this, *this, *this)
    , KeptEntries(static_cast<const SharedObjects&>(*this))
    , m_desktop(desktop)
{
}

bool modShared::InitObjects(Host& host, bool reload)
{
    bool counted = false;
    trap(L"modShared", L"InitObjects", [&] {
        if (reload) {
            frmDummy dummy;
            m_desktop.load(dummy);
            m_desktop.unload(dummy);
        }
        if (m_instanceCount == std::numeric_limits<short>::max())
            throw Failure(L"Overflow");
        ++m_instanceCount;
        counted = true;
        if (m_instanceCount == 1)
            obtain(host);
    });
    return counted;
}

void modShared::ReleaseObjects()
{
    if (m_instanceCount > 0)
        --m_instanceCount;
    if (m_instanceCount >= 1)
        return;
    forgetEntries();
    release();
    // Otherwise the next start would show this user's message before it has fetched its own.
    clearPermissionMessage();
}

Text modShared::DateToFMDate(TextView text, TimePart timePart)
{
    Text result;
    trap(L"modShared", L"DateToFMDate", [&] {
        if (text.empty())
            return;
        const auto moment = parseDate(text);
        if (!moment)
            throw Failure(L"\"" + Text(text) + L"\" is not a date.");
        result = fmDateOf(*moment, timePart);
    });
    return result;
}

void modShared::FilterEditKeys(int& keyCode, int shift, EditHandle edit)
{
    filterEditKeys(m_desktop, keyCode, shift, edit);
}

Text modShared::VersionText() const
{
    Text text = wholeText(VersionMajor) + L"." + wholeText(VersionMinor) + L".0." + wholeText(VersionRevision) + L"  "
        + Text(ApplicationTitle);
    if (!PermissionMessage().empty())
        text += Text(LineBreak) + Text(LineBreak) + PermissionMessage();
    return text;
}

}
