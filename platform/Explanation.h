#pragma once

#include "api/Text.h"

#include <functional>
#include <vector>

namespace health {

// How a text is meant; the front end shows it by colour and a symbol.
enum class Tone {
    Quiet,
    Good,
    Caution,
    Error,
};

// What a form says about a field and its present entry. Empty texts are not shown.
struct Explanation {
    Text beside; // how the entry is understood: "Fri Jul 24, 2026 · 17 weeks ago"
    Tone tone = Tone::Quiet; // of `beside`
    Text below; // what is allowed: "allowed: up to today"
    Text suggestion; // a value that can be derived from other fields, a sentence
    // Enters the suggested value; empty if it cannot be used.
    std::function<void()> use;
};

// Whose record a form shows, and of which visit.
struct FormHeading {
    enum class Visit {
        Unknown, // the record has no visit; the heading shows the current one quietly
        Current, // the record's visit is the current one
        Other,
    };

    Text name; // of the patient; empty if the form has no heading
    std::vector<Text> details; // number, sex, age
    Text visit; // date and place
    Visit visitKind = Visit::Unknown;
    Text record; // the date of an existing record
    Text warning; // why nothing can be saved; empty if it can
};

// What OK will send.
struct SaveSummary {
    struct Part {
        Text caption;
        Text value; // empty: sent empty
        bool isChanged = false; // differs from the record that was read
    };

    std::vector<Part> parts; // in the order in which the list shows them
    std::vector<Text> surprises; // sentences on what is sent differently from what the form shows
};

// A line of the form that offers something, such as a comparison; empty if there is nothing to say.
struct FormNotice {
    Text text;
    Text action; // the caption of its button
};

}
