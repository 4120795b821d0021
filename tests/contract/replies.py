"""What the server answers, call by call: each guard of the routines has a row that it refuses and one that it accepts.
replies.py PHSERVER"""

import datetime
import os
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tools"))
from server_session import Session

TOMORROW = (datetime.date.today() + datetime.timedelta(1)).strftime("%m/%d/%Y")
LONG = "x" * 200
GONE = "-1^The record 99999999 does not exist any more."
KEPT = "^^^^^^^^^^HARTLEY,MARIGOLD ROSE|1"
# A weight as it is typed, and as pounds, ounces, kilograms and grams.
WEIGHTS = {"7 2": "7^2^3.232^3232", "7 2 ": "7^2^3.232^3232", "+7  2.": "7^2^3.232^3232", "7-2": "7^2^3.232^3232",
           "7 1e1": "7^10^3.459^3459", "7 .5": "7^0.5^3.189^3189", "0.91K": "2^0^0.91^910", ".95k": "2^2^0.95^950",
           "3.123456K": "6^14^3.123^3123", "+.32E1K": "7^1^3.2^3200", "3200.4G": "7^1^3.2^3200", "K": "^^^"}
# A comment as it is typed, and as it is shown: U+2060 keeps it from being read as an error.
COMMENTS = {"-3 days": "\u2060-3 days", "  -3": "\u2060  -3", "-.5": "\u2060-.5", "\t-1": "\u2060 -1",
            "-9" + "9" * 400: "\u2060-9" + "9" * 400, "+-3": "+-3", "- 3": "- 3", "\u20133": "\u20133", "-": "-",
            "x \u2060-3": "x -3", "two\r\nlines": "two\r\nlines", "-4" + "é" * 3998: "\u2060-4" + "é" * 3998}
FORGED = "x\r\n99~~~EXAM~1~FORGED\r\n"


def saved(call, parameter, get, patient, reply):
    return [(call, parameter, "1"), (get, patient, reply)]


# User: rows of call, parameter, reply. {name} stands for a number that numbers() or an earlier row has found: a row
# whose expected reply is "=name" stores the first piece of its reply; "*text" is the end of a reply of one line.
ROWS = {
    "SORREL,ADA": [
        *[(f"MEV{name}", who, f"-1^There is no patient {who}.") for who in ("999999", "1\"_$H")
          for name in ("REP GET", "BMSR GET", "VIF GET", "VELD GET", "VAST GET", "VTXC GET", "REF GET",
            "VAST GETREG", "VAST GETNOTE")],
        *[(f"MEV{name} {call}", parameter, GONE) for call, parameter in (("GET", "^99999999"), ("DEL", "99999999"))
          for name in ("VIF", "VELD", "VAST", "VTXC", "VER")],
        ("MEVREF DEL", "99999999", GONE),
        ("MEVVIF SET", "99999999^8^1", GONE),
        ("MEVVELD SET", "99999999^1^^^^^^^^^^^^^^", GONE),
        *[(f"MEV{name}", "14", "") for name in ("REP GET", "VELD GET", "VAST GETREG", "VAST GETNOTE", "BMSR GET")],
        ("MEVUTL GETPARM", "Unknown", ""),
        ("MEVUTL SETPARM", "RepHist-PedWtOpt^2", "1"),
        ("MEVUTL GETPARM", "RepHist-PedWtOpt", "2"),
        ("MEVUTL SETPARM", "MEVZ^1", "-1^The parameter MEVZ may not be changed here."),
        ("MEVUTL CHKSEC", "PROVIDER|MEVZ CAC|MEVZ VIEW ONLY|MEVZ REP HIST EDIT^MEV DISABLE REP HIST EDITING",
         "1|1|0|0^0~"),
        ("MEVREP SET", "1^Gx", "-1^The counts Gx cannot be read."),
        ("MEVREP SET", "1^G1P0LC0SA0TA0^02/30/2026^^", "-1^02/30/2026 is not a date."),
        *[("MEVREP SET", f"1^G1P0LC0SA0TA0{at}{date}", f"-1^{date} is outside the years 1800 to 2699.") for at, date in
          (("^", "1/5/3026"), ("^^^", "12/31/1799"), ("^^^^1^", "01/01/2700"))],
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^^", "-1^The pregnancy's data are missing: nothing was saved."),
        *saved("MEVREP SET", "1^G3P1LC1SA1TA0^07/24/2026^None^01/25/2026^1^12/31/2699^Unknown Method",
               "MEVREP GET", "1",
               "G3P1LC1SA1TA0^07/24/2026^NONE^01/25/2026^UNKNOWN METHOD^12/31/2699"),
        ("MEVREP SET", "999999^G0P0LC0SA0TA0^^^^0^^", "-1^There is no patient 999999."),
        *[("MEVREP SET", f"{patient}^G0P0LC0SA0TA0^^^^0^^",
          "-1^Reproductive factors are kept only of women and of girls older than 8.") for patient in (2, 3)],
        ("MEVREP SET", "4^G0P0LC0SA0TA0^^^^0^^", "1"),
        ("MEVREP SET", f"1^G0P0LC0SA0TA0^{TOMORROW}^^^0^^", "-1^The last menstrual period cannot be in the future."),
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^X^^0^^", "-1^The family planning method is not known."),
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^^^1^^X", "-1^The way of determining the delivery date is not known."),
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^^^2^^", "-1^The pregnancy flag must be 0 or 1."),
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^^^1^^",
         "-1^Enter the estimated delivery, or choose how it was determined; \"Unknown Method\" will do."),
        ("MEVREP SET", "1^G1P0LC0SA0TA0^02/29/2024^^^1^12/31/1800^Sonogram", "1"),
        ("MEVREP GET", "1", "G1P0LC0SA0TA0^02/29/2024^^^SONOGRAM^12/31/1800"),
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^^^0^12/31/1800^Sonogram", "1"),
        ("MEVREP GET", "1", "G0P0LC0SA0TA0^^^^^"),
        ("MEVREP DEL", "1", "1"),
        ("MEVREP DEL", "1", "-1^The record does not exist any more."),
        ("MEVREP DEL", "999999", "-1^There is no patient 999999."),
        ("MEVBMSR SET", "999999^7 2^1^^^^", "-1^There is no patient 999999."),
        ("MEVBMSR SET", "5^7 2^1^5D^6W^7Y^", "1"),
        ("MEVBMSR GET", "5", "7^2^3.232^3232^^^^^^1^5D^6W^7Y^"),  # an ounce has 28.35 grams
        ("MEVBMSR SET", "5^0 99^24^998M^^^", "1"),
        ("MEVBMSR SET", "5^99 0^1^^^^", "1"),
        *[("MEVBMSR SET", f"5^{weight}^1^^^^", f"-1^The birth weight {weight} cannot be read.") for weight in
          ("heavy", "7 -0.5", "7--2", "7 2 1", "3.2", "1E999K", "100 0", "0 100", "100K")],
        *[("MEVBMSR SET", f"5^^{order}^^^^", f"-1^The birth order {shown} is not possible.") for order, shown in
          (("0", "0"), ("25", "25"), ("1234567890\t12345678é", "1234567890 12345678"))],  # cut before a whole letter
        *[("MEVBMSR SET", f"5^^1^{ages}", f"-1^The age {ages.strip('^')} cannot be read.") for ages in
          ("5X^^^", "0M^^^", "999M^^^", "^6^^", "^^999D^")],
        ("MEVBMSR SET", "5^^1^^^^999999", "-1^The mother or guardian is not known."),
        *[row for typed, shown in WEIGHTS.items()
          for row in saved("MEVBMSR SET", f"6^{typed}^^^^^1", "MEVBMSR GET", "6", shown + KEPT)],
        *saved("MEVBMSR SET", "6^^1.5^.5M^6 M^ +1e1D^1", "MEVBMSR GET", "6",
          "^^^^^^^^^1.5^0.5M^6M^10D^HARTLEY,MARIGOLD ROSE|1"),
        *saved("MEVBMSR SET", "6^^ +2 ^0.50W^.250y^^1", "MEVBMSR GET", "6",
          "^^^^^^^^^2^0.5W^0.25Y^^HARTLEY,MARIGOLD ROSE|1"),
        ("MEVBMSR SET", "5^1" + "0" * 40 + "G^1^^^^", "-1^The birth weight 1" + "0" * 39 + " cannot be read."),
        ("MEVBMSR SET", "5^^1^^^^5", "-1^The patient cannot be the mother or guardian."),
        ("MEVVIF SET", "x^{visit5}^2", "-1^There is no such record."),
        ("MEVVIF SET", "^x^2", "-1^The visit is not known."),
        ("MEVVIF SET", "^99999999^2", "-1^The visit 99999999 does not exist."),
        ("MEVVIF SET", "^{visit5}^9", "-1^The feeding choice is not known."),
        ("MEVVIF SET", "{feeding}^{visit2}^2", "-1^The record belongs to another patient."),
        ("MEVVTXC SET", "{locked}^{visit2}^P^01/02/2026^1", "-1^The record is locked."),
        ("MEVVTXC DEL", "{locked}", "-1^The record is locked."),
        ("MEVVTXC SET", f"^{{visit2}}^P^{TOMORROW}^1", "-1^The contract cannot begin in the future."),
        ("MEVVTXC SET", "^{visit2}^P^01/02/2026^999", "-1^The provider is not known."),
        ("MEVVTXC SET", "^{visit2}^X^01/02/2026^1", "-1^The type of contract is not known."),
        ("MEVVTXC SET", "^{visit2}^P^12/31/1799^1", "-1^12/31/1799 is outside the years 1800 to 2699."),
        ("MEVVTXC SET", "^{visit2}^P^01/01/1800^1", "1"),
        *[("MEVVTXC SET", f"^{{visit2}}^P^{date}^1", "-1^The date initiated is not a date.") for date in
          ("02/29/2023", "13/01/2023", "01/00/2023", "01/02/2023 23:60", "01/02/2023 24:00")],
        ("MEVVTXC SET", "^{visit2}^P^01/02/2023 23:59^1", "1"),
        ("MEVVAST SET", "^{visit2}^5^^^^^^^", "-1^The severity is not known."),
        ("MEVVAST SET", "{asthma11}^{visit5}^1", "-1^The record belongs to another patient."),
        ("MEVVELD SET", "{function10}^{visit5}^Independent", "-1^The record belongs to another patient."),
        ("MEVVAST SET", "^{visit2}^2^150^150^100", "1"),
        ("MEVVAST SET", "^{visit2}^2^^^700", "1"),
        *[("MEVVAST SET", "^{visit2}^2" + at + value, f"-1^The lung function value {value} is not possible.")
          for at, value in (("^", "151"), ("^", "80.5"), ("^^^", "99"), ("^^^", "701"))],
        ("MEVVAST SET", "^{visit2}^2^^^^Perhaps", "-1^The answer Perhaps is not Yes or No."),
        ("MEVVELD SET", "^{visit2}^ALONE", "-1^The answer ALONE is not known."),
        ("MEVVELD SET", "^{visit2}^^^^^^^^^^^^^Independent^", "-1^The answer Independent is not known."),
        ("MEVVER SET", "^{visit2}^e^^^^^^^^^^", "-1^The code e is not known."),
        ("MEVVER SET", "^{visit2}^^^^^^^^^^13260105.08^^", "-1^01/05/3026 is outside the years 1800 to 2699."),
        ("MEVVER SET", "^{visit2}^^^^^^^^^^0991231^", "-1^12/31/1799 is outside the years 1800 to 2699."),
        *[("MEVVER SET", "^{visit2}^E^A^W^^^^^^3260102." + rest, "1") for rest in ("24^^^LOC.`1", "235959^^^VEN.`1")],
        *[("MEVVER SET", f"^{{visit2}}^E^A^W^^^^^^{time}^^", f"-1^The departure {time} is not a date.")
          for time in ("3260102.25", "3260102.096", "3260102.09006", "3260230")],
        *[("MEVVER SET", "^{visit2}^E^A^W^^^^^^^^^" + place, "-1^The place of the transfer is not known.")
          for place in ("XXX.`1", "LOC.`99")],
        *[("MEVVER SET", "^{visit2}" + "^" * (piece - 2) + LONG + "x",
          f"-1^The {name} is longer than 200 characters.") for piece, name in
          ((6, "other means of arrival"), (8, "informant"), (10, "other disposition"), (13, "condition on departure"))],
        ("MEVVER SET", f"^{{visit5}}^E^A^O^{FORGED}^R^{FORGED}^O^{FORGED}^3260102.0915^^{FORGED}^VEN.`1", "1"),
        ("MEVVER GET", "5",
         "*R^OTHER|O^x  99~~~EXAM~1~FORGED  ^01/02/2026@09:15^^x  99~~~EXAM~1~FORGED  "
         "^CEDAR RIDGE SPECIALISTS|1;AUTTVNDR(\r\n"),
        ("MEVVER GET", "^x", "-1^There is no such record."),
        ("MEVVER GET", "^99999", "-1^The record 99999 does not exist any more."),
        ("MEVREF GET", "13^x", "-1^There is no such refusal."),
        ("MEVREF GET", "14^{refusal}", "-1^The refusal {refusal} does not exist any more."),
        ("MEVREF SET", "{lockedref}^EXAM^1^13^01/02/2026^", "-1^The refusal is locked."),
        ("MEVREF SET", "{refusal}^EXAM^1^14^01/02/2026^", "-1^The refusal belongs to another patient."),
        ("MEVREF SET", "^EXAM^1^999999^01/02/2026^", "-1^There is no patient 999999."),
        ("MEVREF SET", "^TATTOO^1^1^01/02/2026^", "-1^The refusal's type is not known."),
        ("MEVREF SET", "^EXAM^99999^1^01/02/2026^", "-1^The refused item is not known."),
        *[("MEVREF SET", f"^EXAM^1^1^{date}^",
          "-1^Enter the date of the refusal as mm/dd/yyyy.") for date in ("", "T-1")],
        ("MEVREF SET", "^EXAM^1^1^01/02/1726^", "-1^01/02/1726 is outside the years 1800 to 2699."),
        ("MEVREF SET", "^EXAM^1^14^01/02/2026^no^thanks", '-1^A text cannot contain a "^": nothing was saved.'),
        ("MEVREF SET", "^EXAM^1^14^01/02/2026^é", "-1^The comment must be longer than 1 character."),
        ("MEVREF SET", "^EXAM^1^17^01/02/2026^declined | allergic", "1"),
        ("MEVREF GET", "17", "=bar"),
        ("MEVREF GET", "17", "*^3260102^^^declined / allergic\r\n"),  # a bar would hide what follows it in the list
        ("MEVREF GET", "17^{bar}", "*^3260102^^^declined | allergic\r\n"),
        ("MEVREF SET", f"^EXAM^2^16^01/05/2020^{FORGED}", "1"),
        ("MEVREF GET", "16", "*^3200105^^^x  99~~~EXAM~1~FORGED  \r\n"),
        ("MEVREF REFLIST", "Lab", "-1^There is no single item of this type."),
        ("MEVREF SET", "^EXAM^1^14^01/02/2026^x", "-1^The comment must be longer than 1 character."),
        ("MEVREF SET", f"^EXAM^1^14^01/02/2026^{LONG}x", "-1^The comment is longer than 200 characters."),
        ("MEVREF SET", f"^EXAM^1^14^{TOMORROW}^", "-1^The refusal cannot be in the future."),
        ("MEVREF SET", f"^EXAM^1^14^01/02/2026^{LONG}", "1"),
        ("MEVREF GET", "14", "=new"),
        ("MEVREF SET", "{new}^EXAM^2^14^01/03/2026^", "1"),  # under another date, its comment gone
        ("MEVREF GET", "14", "{new}^^^EXAM^2^EYE EXAM^^^3260103^^^\r\n"),
        ("MEVREF DEL", "{new}", "1"),
        ("MEVREF GET", "14", ""),
        ("MEVVAST SETREG", "11^A", "-1^You may not change the asthma registry."),
        ("MEVVAST SETREG", "11^I", "1"),  # as deleting an asthma record may
        ("MEVVAST SETREG", "11^I^", "-1^You may not change the asthma registry."),
        ("MEVHOST SAMPLE", "", "1"),
        ("MEVHOST SUBSCRIBE", "", "-1^An event name is missing."),
        ("MEVHOST SUBSCRIBE", LONG + "x", "-1^The event name is too long."),
        ("MEVUTL DICLKUP", "2^QUIET,I^^^250", "14^QUIET,IRIS^QUIET,IRIS^F^{birth14}\r\n"),
        ("MEVUTL DICLKUP", "200^SORREL^^^250", "1^SORREL,ADA^SORREL,ADA\r\n"),
        ("MEVUTL DICLKUP", "44^GEN^^^250", "1^GENERAL CLINIC^GEN\r\n"),
        ("MEVUTL DICLKUP", "9999999.07^BP^^^250", "1^^BP^BLOOD PRESSURE\r\n"),
        ("MEVUTL DICLKUP", "9999999.14^INFLU^^^250", "1^INFLUENZA^INFLUENZA^^INFLUENZA\r\n"),
        ("MEVUTL DICLKUP", "9999999.88^BILAT^^^250", "3^50^50^BILATERAL PROCEDURE\r\n"),
        ("MEVUTL DICLKUP", "9999999.14^VARI^^^250^^I $D(~AUTTIML(\"C\",Y)),$P($G(~AUTTIMM(Y,0)),U,7)'=1", ""),
        ("MEVUTL DICLKUP", "200^BRIGHTW^^^250^^I $$ACTPRV(Y)", ""),
        ("MEVUTL DICLKUP", "60^GLU^^^1", "2^GLUCOSE^GLUCOSE^\r\n"),
        ("MEVUTL DICLKUP", "60^^^^1", "6^COMPLETE BLOOD COUNT^COMPLETE BLOOD COUNT^\r\n"),
        ("MEVUTL DICLKUP", "60^" + "G" * 101 + "^^^1", ""),
        ("MEVUTL DICLKUP", "2^^^^250", ""),
        ("MEVUTL DICLKUP", "2^^^^250^^K ^MEVPAT^^.01", "-1^This screen is not known."),  # never executed
        # Searches reach tables, never the files of records, visits and classes.
        *[("MEVUTL DICLKUP", f"{file}^1^^^250^^^^.01", "-1^This file cannot be searched.") for file in
          ("9100.1", "9100.9", "9000010", "8930", "9999999.04", "0", "2.0", "02", "^MEVPAT", '2"')],
    ],
    "ROLLINS,COLE": [
        ("MEVVAST SETREG", "11^X", "-1^The registry status must be A or I."),
        ("MEVVAST SETREG", "999999^A", "-1^There is no patient 999999."),
        ("MEVVAST SETREG", "14^I", "1"),
        ("MEVVAST GETREG", "14", ""),
        ("MEVVAST SETREG", "11^A^x", "-1^x is not a date."),
        ("MEVVAST SETREG", "11^A^^^^999", "-1^The case manager is not known."),
        *[row for typed, shown in COMMENTS.items() for text in (typed, shown)  # as typed, and as the form shows it
          for row in saved("MEVVAST SETREG", f"17^A^^^^^{text}", "MEVVAST GETNOTE", "17", shown + "\r\n")],
        ("MEVVAST SETREG", "17^A^^^^^" + "x" * 4001, "-1^The comment is longer than 4,000 characters."),
        ("MEVVAST SETREG", "11^A^^^^1^Line", "1"),
        ("MEVVAST SETREG", "11^A^01/02/2026", "1"),
        ("MEVVAST GETREG", "11", "11^ACTIVE|A^01/02/2026^^^SORREL,ADA|1"),
        ("MEVVAST GETNOTE", "11", ""),
        ("MEVVAST SETREG", "11^I", "1"),
        ("MEVVAST GETREG", "11", "11^INACTIVE|I^01/02/2026^^^SORREL,ADA|1"),
    ],
    "PACT,MILO": [("MEVBMSR SET", "6^^^^^^", "-1^You hold neither the PROVIDER key nor the MEVZ PEDIATRIC EDIT key.")],
    "BRIGHTWATER,NELL": [
        ("MEVVAST DEL", "1", "-1^You hold neither the PROVIDER key nor the MEVZ ASTHMA EDIT key."),
        ("MEVBMSR SET", "7^1 1^3^^^^", "1"),
    ],
    "GLASS,VIOLA": [("MEVREP SET", "4^G0P0LC0SA0TA0^^^^0^^", "-1^You hold the MEVZ VIEW ONLY key.")],
    "BARE,JUNO": [
        ("MEVREP SET", "4^G0P0LC0SA0TA0^^^^0^^",
         "-1^You hold neither the PROVIDER key nor the MEVZ REP HIST EDIT key."),
        ("MEVVELD SET", "^{visit2}^", "-1^You hold neither the PROVIDER key nor the MEVZ ELDER CASE EDIT key."),
        ("MEVREF SET", "^EXAM^1^14^01/02/2026^", "1"),  # refusals need no key
        ("MEVVAST SETREG", "11^I", "-1^You may not change the asthma registry."),
    ],
    "HALTON,PIERS": [
        ("MEVREP SET", "4^G0P0LC0SA0TA0^^^^0^^", "-1^Editing of the reproductive history is disabled for you."),
        ("MEVREP DEL", "4", "-1^Editing of the reproductive history is disabled for you."),
        ("MEVVAST SETREG", "12^A", "-1^You may not change the asthma registry."),
    ],
    "NEWCOMB,TESSA": [
        ("MEVREP SET", "4^G0P0LC0SA0TA0^^^^0^^",
         "-1^Editing of the reproductive history is disabled for your user class."),
    ],
}


def numbers(session):
    """What the rows name."""
    contracts, refusals = session.lines("MEVVTXC GET", "2"), session.lines("MEVREF GET", "13")
    birth = int(session.lines("MEVHOST PATIENT", "14")[0][3]) + 17000000
    return {
        "visit2": session.lines("MEVHOST VISITS", "2")[0][0],
        "visit5": session.lines("MEVHOST VISITS", "5")[0][0],
        "feeding": session.lines("MEVVIF GET", "5")[0][0],
        "asthma11": session.lines("MEVVAST GET", "11")[0][0],
        "function10": session.lines("MEVVELD GET", "10")[0][0],
        "locked": next(line[0] for line in contracts if line[1] == "1"),
        "refusal": next(line[0] for line in refusals if line[9] == ""),
        "lockedref": next(line[0] for line in refusals if line[9] == "1"),
        "birth14": f"{birth // 100 % 100:02}/{birth % 100:02}/{birth // 10000}",
    }


def main(program):
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        data = os.path.join(folder, "data")
        names = {}
        for user, rows in ROWS.items():
            session = Session(program, data, user)
            names = names or numbers(session)
            for call, parameter, expected in rows:
                reply = session.reply(call, parameter.format(**names) if "{" in parameter else parameter)
                if expected.startswith("="):
                    names[expected[1:]] = reply.split("^")[0]
                    continue
                expected = expected.format(**names) if "{" in expected else expected
                if expected.startswith("*") and reply.endswith(expected[1:]) and reply.count("\n") == 1:
                    continue
                if reply != expected:
                    failed += 1
                    print(f"{user}: {call} {parameter[:100]}\n  expected {expected!r}\n  got      {reply[:300]!r}")
            session.close()
    sys.exit(failed != 0)


main(sys.argv[1])
