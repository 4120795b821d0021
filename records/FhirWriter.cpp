#include "records/FhirWriter.h"

#include "api/Utf8.h"
#include "records/Uuid.h"
#include "text/Conversions.h"
#include "text/Letters.h"
#include "text/Pieces.h"

#include <algorithm>

namespace health {

namespace {

constexpr std::size_t MostDecimalDigits = 15;

// As regular expressions count them.
bool isBlank(wchar_t letter)
{
    constexpr TextView blanks = L" \t\r\n\u00A0\u1680\u2028\u2029\u202F\u205F\u3000\uFEFF";
    return blanks.find(letter) != TextView::npos || letter == 0x85 || (letter >= 0x2000 && letter <= 0x200A);
}

wchar_t allowed(wchar_t letter)
{
    if (letter == L'\t' || letter == L'\r' || letter == L'\n')
        return letter;
    if (isBlank(letter))
        return L' ';
    const bool control = letter < 0x20 || (letter >= 0x7F && letter < 0xA0);
    const bool noLetter = (letter & 0xFFFE) == 0xFFFE || (letter >= 0xD800 && letter < 0xE000);
    return control || noLetter ? L'\uFFFD' : letter;
}

Text escaped(TextView text)
{
    Text html;
    for (const wchar_t letter : text) {
        if (letter == L'&')
            html += L"&amp;";
        else if (letter == L'<')
            html += L"&lt;";
        else if (letter == L'>')
            html += L"&gt;";
        else if (letter == L'"')
            html += L"&quot;";
        else
            html += letter;
    }
    return html;
}

// "Z" or an offset from -14:00 to +14:00.
bool isZone(TextView text)
{
    if (text == L"Z")
        return true;
    if (text.size() != 6 || (text[0] != L'+' && text[0] != L'-') || text[3] != L':')
        return false;
    for (const std::size_t digit : { 1u, 2u, 4u, 5u }) {
        if (!isDigit(text[digit]))
            return false;
    }
    const TextView hours = text.substr(1, 2);
    return text[4] < L'6' && (hours < L"14" || text.substr(1) == L"14:00");
}

TextView genderOf(TextView sex) { return sex == L"F" ? L"female" : sex == L"M" ? L"male" : L"unknown"; }

}

Text fhirText(TextView text)
{
    Text clean(text);
    std::transform(clean.begin(), clean.end(), clean.begin(), allowed);
    const auto first = std::find_if_not(clean.begin(), clean.end(), isBlank);
    const auto last = std::find_if_not(clean.rbegin(), std::make_reverse_iterator(first), isBlank).base();
    return { first, last };
}

Text plainDecimal(TextView text)
{
    const TextView whole = text.substr(0, text.find(L'.'));
    const TextView fraction = text.substr(std::min(whole.size() + 1, text.size()));
    const bool digits =
        std::all_of(whole.begin(), whole.end(), isDigit) && std::all_of(fraction.begin(), fraction.end(), isDigit);
    if (!digits || whole.size() + fraction.size() == 0 || text.size() > MostDecimalDigits)
        return {};
    const TextView significant = whole.substr(std::min(whole.find_first_not_of(L'0'), whole.size()));
    Text number(significant.empty() ? L"0" : significant);
    return fraction.empty() ? number : number + L'.' + Text(fraction);
}

FhirWriter::FhirWriter(const ExportSubject& subject, FhirChoices choices)
    : m_subject(subject)
    , m_choices(choices)
    , m_patientName(narrow(subject.identifiers + L"/patients/" + wholeText(subject.patient)))
    , m_patientUrl(uniqueUrl(m_patientName))
{
}

void FhirWriter::patient()
{
    m_json.breakLine();
    m_json.beginObject();
    m_json.text("fullUrl", widen(m_patientUrl));
    m_json.beginObject("resource");
    m_json.text("resourceType", L"Patient");
    const Text number = wholeText(m_subject.patient);
    narrative(L"Patient " + number + (m_subject.name.empty() ? L"" : L": " + m_subject.name));
    m_json.array("identifier", [&] { identifier(L"patients", number); });
    m_json.array("name", [&] { m_json.object("", [&] { string("text", m_subject.name); }); });
    m_json.text("gender", genderOf(m_subject.sex));
    if (const auto birth = isoDate(m_subject.birthDate))
        m_json.text("birthDate", isoText(*birth));
    endEntry();
}

void FhirWriter::beginEntry(TextView type, const FhirName& name, TextView text)
{
    Text identity = Text(name.kind) + L'/' + Text(name.record);
    if (!name.part.empty())
        identity += L'/' + Text(name.part);
    m_json.breakLine();
    m_json.beginObject();
    m_json.text("fullUrl", widen(uniqueUrl(m_patientName + '/' + narrow(identity))));
    m_json.beginObject("resource");
    m_json.text("resourceType", type);
    narrative(text);
    m_json.array("identifier", [&] { identifier(L"records", identity); });
}

void FhirWriter::endEntry()
{
    m_json.end();
    m_json.end();
}

// Even records that the server sent twice get different ones.
std::string FhirWriter::uniqueUrl(const std::string& name)
{
    std::string unique = name;
    while (!m_names.insert(unique).second)
        unique = name + "#" + std::to_string(++m_repeated[name] + 1);
    return "urn:uuid:" + nameUuid(UrlNamespace, unique);
}

void FhirWriter::narrative(TextView text)
{
    m_json.object("text", [&] {
        m_json.text("status", L"generated");
        m_json.text("div", L"<div xmlns=\"http://www.w3.org/1999/xhtml\">" + escaped(fhirText(text)) + L"</div>");
    });
}

void FhirWriter::dateTime(std::string_view name, const std::optional<PartialDate>& date)
{
    if (!date)
        return;
    Text text = isoText(*date);
    if (date->time) {
        if (const Text zone = m_subject.zoneOffset(*date->time); isZone(zone)) {
            const Text clock = clockText(*date->time);
            text += L'T' + clock + (clock.size() == 5 ? L":00" : L"") + zone;
        }
    }
    m_json.text(name, text);
}

void FhirWriter::patientReference(std::string_view name)
{
    m_json.object(name, [&] { m_json.text("reference", widen(m_patientUrl)); });
}

void FhirWriter::reference(std::string_view name, TextView place, TextView number, TextView display)
{
    m_json.object(name, [&] {
        if (const Text value = fhirText(number); !value.empty() && value != L"0") {
            m_json.object("identifier", [&] {
                m_json.text("system", m_subject.identifiers + L'/' + Text(place));
                m_json.text("value", value);
            });
        }
        string("display", display);
    });
}

void FhirWriter::identifier(TextView place, TextView value)
{
    m_json.object("", [&] {
        m_json.text("system", m_subject.identifiers + L'/' + Text(place));
        string("value", value);
    });
}

void FhirWriter::coding(TextView system, TextView code, TextView display)
{
    m_json.object("", [&] {
        m_json.text("system", system);
        m_json.text("code", code);
        m_json.text("display", display);
    });
}

// No display of LOINC: it differs between its releases.
void FhirWriter::item(std::string_view name, const ItemCode& item)
{
    m_json.object(name, [&] {
        m_json.array("coding", [&] {
            if (!item.loinc.empty())
                coding(Loinc, item.loinc);
            coding(LocalCodes, item.code, item.display);
        });
        m_json.text("text", item.display);
    });
}

void FhirWriter::choice(std::string_view name, Choices choices, TextView stored)
{
    m_json.object(name, [&] {
        if (const ValueCode* const value = valueCode(choices, stored)) {
            m_json.array("coding", [&] {
                if (m_choices.usesSnomed && !value->snomed.empty())
                    coding(Snomed, value->snomed);
                coding(LocalCodes, value->code, value->display);
            });
        }
        string("text", stored);
    });
}

void FhirWriter::words(std::string_view name, TextView stored)
{
    m_json.object(name, [&] { string("text", stored); });
}

}
