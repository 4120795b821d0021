#include "platform/EntrySnapshot.h"

#include "platform/Form.h"
#include "platform/controls/CheckBox.h"
#include "platform/controls/CheckList.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/FieldVisitor.h"
#include "platform/controls/OptionButton.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/mevZvDate.h"

namespace health {

class EntryReader final : public FieldVisitor {
public:
    using FieldVisitor::visit;

    explicit EntryReader(std::vector<EntrySnapshot::Entry>& entries)
        : m_entries(entries)
    {
    }
    void visit(CheckBox& checkBox) override { add().index = checkBox.isChecked(); }
    void visit(CheckList& list) override
    {
        EntrySnapshot::Entry& entry = add();
        for (int row = 0; row < list.count(); ++row) {
            if (list.isChecked(row))
                entry.checked.push_back(row);
        }
        // A row that is only current is not an entry.
        entry.index = entry.checked.empty() ? -1 : list.listIndex();
    }
    void visit(ComboBox& comboBox) override { add().index = comboBox.listIndex(); }
    void visit(OptionButton& option) override { add().index = option.isChosen(); }
    void visit(TextBox& textBox) override
    {
        EntrySnapshot::Entry& entry = add();
        entry.text = textBox.text();
        entry.hidden = textBox.tag();
    }
    void visit(mevZvDate& date) override
    {
        EntrySnapshot::Entry& entry = add();
        entry.text = date.shown();
        entry.hidden = date.value();
    }

private:
    EntrySnapshot::Entry& add() { return m_entries.emplace_back(); }

    std::vector<EntrySnapshot::Entry>& m_entries;
};

class EntryWriter final : public FieldVisitor {
public:
    using FieldVisitor::visit;

    explicit EntryWriter(const std::vector<EntrySnapshot::Entry>& entries)
        : m_next(entries.begin())
    {
    }
    void visit(CheckBox& checkBox) override { checkBox.setChecked(m_next++->index != 0); }
    void visit(CheckList& list) override
    {
        const EntrySnapshot::Entry& entry = *m_next++;
        for (int row = 0; row < list.count(); ++row)
            list.setChecked(row, false);
        for (const int row : entry.checked)
            list.setChecked(row, true);
        list.setListIndex(entry.index);
    }
    void visit(ComboBox& comboBox) override { comboBox.setListIndex(m_next++->index); }
    void visit(OptionButton& option) override { option.setChosen(m_next++->index != 0); }
    void visit(TextBox& textBox) override
    {
        textBox.setText(m_next->text);
        textBox.setTag(m_next++->hidden);
    }
    void visit(mevZvDate& date) override { date.setValue(m_next++->hidden); }

private:
    std::vector<EntrySnapshot::Entry>::const_iterator m_next;
};

class TypingWriter final : public FieldVisitor {
public:
    using FieldVisitor::visit;

    explicit TypingWriter(const std::vector<EntrySnapshot::Entry>& entries)
        : m_next(entries.begin())
    {
    }
    void visit(CheckBox&) override { ++m_next; }
    void visit(CheckList&) override { ++m_next; }
    void visit(ComboBox&) override { ++m_next; }
    void visit(OptionButton&) override { ++m_next; }
    void visit(TextBox&) override { ++m_next; }
    void visit(mevZvDate& date) override
    {
        if (m_next->text != m_next->hidden)
            date.type(m_next->text);
        ++m_next;
    }

private:
    std::vector<EntrySnapshot::Entry>::const_iterator m_next;
};

namespace {

void visitFields(const Arrangement& part, ControlVisitor& visitor)
{
    if (part.control)
        part.control->accept(visitor);
    for (const Arrangement& child : part.children)
        visitFields(child, visitor);
}

}

EntrySnapshot::EntrySnapshot(Form& form)
{
    EntryReader reader(m_entries);
    visitFields(form.arrangement(), reader);
}

void EntrySnapshot::restoreValues(Form& form) const
{
    EntryWriter writer(m_entries);
    visitFields(form.arrangement(), writer);
}

void EntrySnapshot::restoreTyping(Form& form) const
{
    TypingWriter writer(m_entries);
    visitFields(form.arrangement(), writer);
}

}
