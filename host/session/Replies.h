// Replies of the server as the host reads them.
#pragma once

#include "api/Text.h"

#include <QList>
#include <QStringList>

namespace health {

// The lines of a list reply, each split into its "^"-pieces. Throws Failure with the server's text for an error reply.
QList<QStringList> linesOf(const Text& reply);

}
