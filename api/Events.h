// The events that pass between a session and the panel: Session::registerEvent, raiseEvent, and EventCallback.
#pragma once

#include "api/Text.h"

namespace health {

// Raised by the host: the panel reloads its list. A host raises it for a "refresh" command of the user, and after a
// connection was lost, because events may have been missed. No data. The server does not know this event.
inline constexpr TextView RefreshEvent = L"REFRESH";

// Raised by the host: the connection to the server was lost or is open again. Data: the seconds until the host tries to
// open it again ("0" while it does), empty when it is open. The panel says so above its list; a host that does not
// raise the event is taken to be connected. The server does not know this event.
inline constexpr TextView ConnectionEvent = L"CONNECTION";

// Raised by the panel: the user asks to open the lost connection now. No data. The panel does not subscribe to it, and
// the server does not know it.
inline constexpr TextView TryNowEvent = L"TRYNOW";

// Raised by the panel: a text for the host's status line, such as "Loading Personal Health Data"; empty clears the
// line. The panel does not subscribe to it, and the server does not know it.
inline constexpr TextView StatusEvent = L"STATUS";

// Raised by the panel after it has saved a record: what was saved, such as "Asthma Status 11/21/2026 08:15", for the
// host's status line. The panel does not subscribe to it, and the server does not know it.
inline constexpr TextView SavedEvent = L"SAVED";

// Raised by the panel when a form with entries was closed without saving them: a text for the user, such as "Entry
// discarded: Update Asthma Record". The host offers to undo that, by ComponentInstance::reopenEntry of any instance. An
// empty text withdraws the offer. The panel does not subscribe to it, and the server does not know it.
inline constexpr TextView DiscardedEvent = L"DISCARDED";

// Raised by the server when a patient's records have changed, in every session that subscribed, the one that made the
// change included. The panel subscribes to prefix + patient number while it shows that patient; in the
// event's name, "." and the kind of record (such as "VELD") follow the number: "VXR.12.VELD". The panel reloads its
// list on every kind. Data: OwnChange in the session that made the change, else empty; a host passes it on.
inline constexpr TextView RecordsEventPrefix = L"VXR.";

// The same for refusals: "REFUSAL.12.REF".
inline constexpr TextView RefusalsEventPrefix = L"REFUSAL.";

// The data of an event that reports a change of the same session.
inline constexpr TextView OwnChange = L"OWN";

}
