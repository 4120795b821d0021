#include "editors/FunctionalItems.h"

namespace health {

static constexpr TextView Levels[] = { L"Independent", L"Needs Help", L"Totally Dependent" };
static constexpr TextView Changes[] = { L"Same", L"Improvement", L"Decline" };
static constexpr TextView Answers[] = { L"Yes", L"No" };

const std::array<FunctionalItem, FunctionalItemCount> FunctionalItems { {
    { L"&Toileting", L"Toileting", Levels, {} },
    { L"&Bathing", L"Bathing", Levels, {} },
    { L"&Dressing", L"Dressing", Levels, {} },
    { L"T&ransfers", L"Transfers", Levels, {} },
    { L"&Feeding", L"Feeding", Levels, {} },
    { L"Co&ntinence", L"Continence", Levels, {} },
    { L"Fin&ances", L"Finance", Levels, {} },
    { L"Coo&king", L"Cooking", Levels, {} },
    { L"&Shopping", L"Shopping", Levels, {} },
    { L"&Housework", L"Housework", Levels, {} },
    { L"&Medications", L"Medications", Levels, {} },
    { L"&Transportation", L"Transportation", Levels, {} },
    { L"Change in Stat&us", L"Status Change", Changes, L"Change in status since last assessment?" },
    { L"&Patient is Caregiver to Others", L"Caregiver", Answers, L"Is the patient a caregiver to others?" },
} };

}
