#include "control/EditKeys.h"

#include "text/Pieces.h"

#include <array>

namespace health {

namespace {

struct NamedKey {
    TextView name;
    EditKey key;
};

constexpr std::array<NamedKey, 6> Keys { {
    { L"MEVZ ELDER CASE EDIT", EditKey::Elder }, // Intended: CASE, although the refusal of an edit says CARE
    { L"MEVZ PEDIATRIC EDIT", EditKey::Pediatric },
    { L"MEVZ ER EDIT", EditKey::Er },
    { L"MEVZ ASTHMA EDIT", EditKey::Asthma },
    { L"MEVZ TX CONTRACT EDIT", EditKey::TxContract },
    { L"QASZMENU", EditKey::Registry },
} };

}

void EditKeys::fetch(const User& user)
{
    std::vector<Text> names;
    names.reserve(std::size(Keys));
    for (const NamedKey& key : Keys)
        names.emplace_back(key.name);
    const Text reply = user.hasKeys(joinPieces(names));
    const LinePieces held(reply);
    m_held.clear();
    PieceNumber piece = 1;
    for (const NamedKey& key : Keys) {
        if (held[piece++] == L"1")
            m_held.insert(key.key);
    }
}

}
