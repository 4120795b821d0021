#include "qt/CourseView.h"

#include "qt/CourseCanvas.h"
#include "toolkit/ControlStyle.h"
#include "toolkit/Measures.h"
#include "toolkit/QtText.h"
#include "toolkit/SpokenItems.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QStandardItemModel>
#include <QTableView>

#include <algorithm>

namespace health {

using namespace Qt::StringLiterals;

namespace {

// A text of one cell: tabs and line ends would shift the others.
QString cellText(const Text& text) { return toQString(text).simplified(); }

QString tableText(const CourseTable& table)
{
    QStringList lines;
    const auto add = [&](const std::vector<Text>& cells) {
        QStringList texts;
        for (const Text& cell : cells)
            texts.append(cellText(cell));
        lines.append(texts.join(u'\t'));
    };
    add(table.headings);
    for (const auto& row : table.rows)
        add(row);
    return lines.join(u'\n');
}

}

CourseView::CourseView(QWidget* parent)
    : QWidget(parent)
    , m_canvas(new CourseCanvas(this))
{
    connect(m_canvas, &CourseCanvas::recordChosen, this, &CourseView::recordChosen);
    connect(m_canvas, &CourseCanvas::copyWanted, this, &CourseView::copyPicture);
    connect(m_canvas, &CourseCanvas::menuWanted, this, &CourseView::openMenu);
    hide();
}

CourseView::~CourseView() = default;

void CourseView::setPicture(std::unique_ptr<CoursePicture> picture)
{
    m_canvas->setPicture(picture.get()); // before the old picture goes
    m_picture = std::move(picture);
    setVisible(m_picture != nullptr);
    if (!m_picture)
        return;
    m_canvas->setAccessibleName(u"Course: "_s + toQString(m_picture->table().title));
    if (m_isTable)
        fillTable();
}

int CourseView::heightFor(int width) const
{
    if (!m_picture)
        return 0;
    if (!m_isTable)
        return m_picture->heightFor(width, look());
    return m_table->horizontalHeader()->height() + m_table->verticalHeader()->length() + 2 * m_table->frameWidth();
}

void CourseView::resizeEvent(QResizeEvent*)
{
    m_canvas->setGeometry(rect());
    if (m_table)
        m_table->setGeometry(rect());
}

// --- The table ---

void CourseView::showAsTable(bool table)
{
    if (m_isTable == table || !m_picture)
        return;
    m_isTable = table;
    const bool focused = isAncestorOf(QApplication::focusWidget());
    if (table && !m_table) {
        m_table = new QTableView(this);
        ControlStyle::giveTo(*m_table);
        new SpokenItems(*m_table);
        m_table->setModel(new QStandardItemModel(m_table));
        m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
        m_table->setTabKeyNavigation(false);
        m_table->setFrameShape(QFrame::NoFrame);
        m_table->verticalHeader()->hide();
        m_table->installEventFilter(this);
        m_table->setGeometry(rect());
    }
    if (table)
        fillTable();
    m_canvas->setVisible(!table);
    m_table->setVisible(table);
    if (focused)
        (table ? static_cast<QWidget*>(m_table) : m_canvas)->setFocus();
    Q_EMIT heightChanged();
}

void CourseView::fillTable()
{
    const CourseTable table = m_picture->table();
    auto& model = static_cast<QStandardItemModel&>(*m_table->model());
    model.clear();
    QStringList headings;
    for (const Text& heading : table.headings)
        headings.append(toQString(heading));
    model.setHorizontalHeaderLabels(headings);
    for (const auto& row : table.rows) {
        QList<QStandardItem*> items;
        for (const Text& cell : row)
            items.append(new QStandardItem(toQString(cell)));
        model.appendRow(items);
    }
    m_table->setAccessibleName(toQString(table.title));
    m_table->verticalHeader()->setDefaultSectionSize(Measures(*this).ems(1.3));
    m_table->resizeColumnsToContents();
}

bool CourseView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ContextMenu) {
        openMenu(static_cast<QContextMenuEvent*>(event)->globalPos());
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy)) {
            copyTable();
            return true;
        }
        if (key->key() == Qt::Key_Escape) {
            showAsTable(false);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

// --- Menu and clipboard ---

void CourseView::openMenu(QPoint global)
{
    if (!m_picture)
        return;
    QMenu menu(this);
    menu.addAction(u"Copy &Picture"_s, this, &CourseView::copyPicture);
    menu.addAction(u"Copy &Table"_s, this, &CourseView::copyTable);
    menu.addSeparator();
    menu.addAction(m_isTable ? u"&Show as Picture"_s : u"&Show as Table"_s, this, [this] { showAsTable(!m_isTable); });
    menu.exec(global);
}

QImage CourseView::image() const
{
    const int width = m_canvas->width();
    const QSize size(width, std::max(m_canvas->height(), m_picture->heightFor(width, look())));
    QImage image(size * devicePixelRatioF(), QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatioF());
    image.fill(palette().color(QPalette::Active, QPalette::Base));
    QPainter painter(&image);
    m_picture->draw(painter, QRect(QPoint(), size), look());
    return image;
}

void CourseView::copyPicture() const
{
    if (!m_picture)
        return;
    auto* const copied = new QMimeData; // owned by the clipboard
    copied->setImageData(image());
    copied->setText(tableText(m_picture->table())); // for programs that take no pictures
    QApplication::clipboard()->setMimeData(copied);
}

void CourseView::copyTable() const
{
    if (m_picture)
        QApplication::clipboard()->setText(tableText(m_picture->table()));
}

}
