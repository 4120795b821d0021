#include "editors/FunctionalItems.h"

namespace health {

static constexpr TextView Levels[] = { L"Independent", L"Needs Help", L"Totally Dependent" };
static constexpr TextView Changes[] = { L"Same", L"Improvement", L"Decline" };
static constexpr TextView Answers[] = { L"Yes", L"No" };

const std::array<FunctionalItem, FunctionalItemCount> FunctionalItems { {
    { L"&Toileting", L"Toileting", L"Toileting", Levels, {} },
    { L"&Bathing", L"Bathing", L"Bathing", Levels, {} },
    { L"&Dressing", L"Dressing", L"Dressing", Levels, {} },
    { L"T&ransfers", L"Transfers", L"Transfers", Levels, {} },
    { L"&Feeding", L"Feeding", L"Feeding", Levels, {} },
    { L"Co&ntinence", L"Continence", L"Continence", Levels, {} },
    { L"Fin&ances", L"Finance", L"Finances", Levels, {} },
    { L"Coo&king", L"Cooking", L"Cooking", Levels, {} },
    { L"&Shopping", L"Shopping", L"Shopping", Levels, {} },
    { L"&Housework", L"Housework", L"Chores", Levels, {} },
    { L"&Medications", L"Medications", L"Meds", Levels, {} },
    { L"&Transportation", L"Transportation", L"Transportation", Levels, {} },
    { L"Change in Stat&us", L"Status Change", L"Status Change", Changes, L"Change in status since last assessment?" },
    { L"&Patient is Caregiver to Others", L"Caregiver", L"Caregiver", Answers,
        L"Is the patient a caregiver to others?" },
} };

}
