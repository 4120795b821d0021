#include "platform/EntryTexts.h"

#include "platform/Form.h"
#include "platform/controls/CheckBox.h"
#include "platform/controls/CheckList.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/FieldVisitor.h"
#include "platform/controls/OptionButton.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/mevContainer.h"
#include "platform/controls/mevZvDate.h"

namespace health {

namespace {

Text withoutAccessKey(Text caption)
{
    std::erase(caption, L'&');
    return caption;
}

// Walks an arrangement. A field is named by its label, a group of options by its frame, and a text beside an option by
// the option.
class Describer final : public FieldVisitor {
public:
    using FieldVisitor::visit;

    explicit Describer(Form& form)
        : m_group(form.caption())
    {
        walk(form.arrangement());
    }

    std::vector<EntryText> take() { return std::move(m_texts); }

    void visit(CheckBox& checkBox) override { add(checkBox.caption(), checkBox.isChecked() ? L"Yes" : L"No"); }
    void visit(CheckList& list) override
    {
        Text checked;
        for (int row = 0; row < list.count(); ++row) {
            if (list.isChecked(row))
                checked += (checked.empty() ? L"" : L", ") + list.itemText(row);
        }
        add(m_label.empty() ? m_group : m_label, checked);
    }
    void visit(ComboBox& comboBox) override { add(m_label, comboBox.text()); }
    void visit(OptionButton& option) override
    {
        m_label = option.caption();
        // The first option of a group stands for all of them.
        if (m_options.empty() || m_options.back() != option.frame()) {
            m_options.push_back(option.frame());
            m_optionEntry = m_texts.size();
            add(m_group, {});
        }
        if (option.isChosen())
            m_texts[m_optionEntry].text = withoutAccessKey(option.caption());
    }
    void visit(TextBox& textBox) override { add(m_label.empty() ? m_group : m_label, textBox.text()); }
    void visit(mevZvDate& date) override { add(m_label, date.shown()); }

private:
    void walk(const Arrangement& part)
    {
        const Text group = m_group;
        if (part.kind == Arrangement::Kind::Frame) {
            const Text& caption = static_cast<const mevContainer*>(part.control)->caption();
            m_group = caption.empty() ? group : caption;
            m_label.clear();
        }
        if (part.label)
            m_label = part.label->caption();
        if (part.control)
            part.control->accept(*this);
        for (const Arrangement& child : part.children)
            walk(child);
        m_group = group;
    }
    void add(const Text& caption, TextView text) { m_texts.push_back({ withoutAccessKey(caption), Text(text) }); }

    std::vector<EntryText> m_texts;
    Text m_group; // the caption around the fields
    Text m_label; // the caption before them
    std::vector<const Control*> m_options; // the frames of the groups seen so far
    std::size_t m_optionEntry = 0;
};

}

std::vector<EntryText> entryTexts(Form& form) { return Describer(form).take(); }

}
