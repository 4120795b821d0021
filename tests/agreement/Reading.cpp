// The scenes in which the user reads the details.
#include "qt/CourseView.h"
#include "tests/agreement/Hands.h"
#include "tests/agreement/Scenes.h"
#include "tests/agreement/SeenDetails.h"

namespace health::test {

QStringList Scenes::rowsOfPanels() const
{
    QStringList rows;
    for (const auto& entry : m_panels)
        rows += rowsOnScreen(*entry.second);
    return rows;
}

void Scenes::noteRows()
{
    m_rowsBefore = rowsOfPanels();
    m_calls = 0;
}

// Reading the details changes no row and asks the server nothing. What the server reports meanwhile does.
QString Scenes::checkRead()
{
    const auto before = std::exchange(m_rowsBefore, std::nullopt);
    if (!before || m_calls > 0 || *before == rowsOfPanels())
        return {};
    return QStringLiteral("reading the details has changed the rows");
}

// In the details of a panel: the keys of the picture, a click on a part, or F9.
void Scenes::readDetails()
{
    static const QStringList keys { "Left", "Right", "Up", "Down", "Home", "End", "Return", "Return", "Ctrl+C" };
    const QScopedValueRollback<const QWidget*> acting(m_actedOn, topWindow());
    m_lastVerb = QStringLiteral("read");
    noteRows();
    const PanelView& panel = *m_panels[static_cast<std::size_t>(random(std::ssize(m_panels)))].second;
    QWidget* const part = partOfDetails(panel, random(3));
    const QWidget* const focus = QApplication::focusWidget();
    const bool isReading = focus && qobject_cast<CourseView*>(focus->parentWidget());
    QString what = isReading ? keys[random(keys.size())] : QStringLiteral("F9");
    if (part && random(2) == 0) {
        const QPoint place = part->mapTo(topWindow(), QPoint(random(part->width()), random(part->height())));
        what = QStringLiteral("click ") + part->accessibleName();
        useMouse("click", place, place);
    } else {
        pressKeys(what);
    }
    m_episode.actions.append(QStringLiteral("read: ") + what);
}

}
