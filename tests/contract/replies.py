"""What the server answers, call by call: each guard of the routines has a row that it refuses and one that it lets pass.
replies.py PHSERVER"""

import datetime
import os
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tools"))
from server_session import Session

TOMORROW = (datetime.date.today() + datetime.timedelta(1)).strftime("%m/%d/%Y")
LONG = "x" * 200

# user: rows of call, parameter, reply. {name} stands for a number that the setting up or a row before has found: a row
# whose reply is "=name" takes its reply's first piece.
ROWS = {
    "SORREL,ADA": [
        ("MEVREP SET", "999999^G0P0LC0SA0TA0^^^^0^^", "-1^There is no patient 999999."),
        ("MEVREP SET", "3^G0P0LC0SA0TA0^^^^0^^", "-1^Reproductive factors are kept only of women and of girls older than 8."),
        ("MEVREP SET", "4^G0P0LC0SA0TA0^^^^0^^", "1"),
        ("MEVREP SET", "2^G0P0LC0SA0TA0^^^^0^^", "-1^Reproductive factors are kept only of women and of girls older than 8."),
        ("MEVREP SET", f"1^G0P0LC0SA0TA0^{TOMORROW}^^^0^^", "-1^The last menstrual period cannot be in the future."),
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^X^^0^^", "-1^The family planning method is not known."),
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^^^1^^X", "-1^The way of determining the delivery date is not known."),
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^^^2^^", "-1^The pregnancy flag must be 0 or 1."),
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^^^1^^", "-1^Enter the estimated delivery, or choose how it was determined; \"Unknown Method\" will do."),
        ("MEVREP SET", "1^G1P0LC0SA0TA0^02/29/2024^^^1^12/31/1800^Sonogram", "1"),
        ("MEVREP GET", "1", "G1P0LC0SA0TA0^02/29/2024^^^SONOGRAM^12/31/1800"),
        ("MEVREP SET", "1^G0P0LC0SA0TA0^^^^0^12/31/1800^Sonogram", "1"),
        ("MEVREP GET", "1", "G0P0LC0SA0TA0^^^^^"),
        ("MEVREP DEL", "1", "1"),
        ("MEVREP DEL", "1", "-1^The record does not exist any more."),
        ("MEVREP DEL", "999999", "-1^There is no patient 999999."),
        ("MEVREP GET", "1", ""),
        ("MEVBMSR GET", "14", ""),
        ("MEVBMSR SET", "999999^7 2^1^^^^", "-1^There is no patient 999999."),
        ("MEVBMSR SET", "5^7 2^1^5D^6W^7Y^", "1"),
        ("MEVBMSR GET", "5", "7^2^3.232^3232^^^^^^1^5D^6W^7Y^"),  # an ounce has 28.35 grams
        ("MEVBMSR SET", "5^0 99^24^998M^^^", "1"),
        ("MEVBMSR SET", "5^99 0^1^^^^", "1"),
        ("MEVBMSR SET", "5^100 0^1^^^^", "-1^The birth weight 100 0 cannot be read."),
        ("MEVBMSR SET", "5^0 100^1^^^^", "-1^The birth weight 0 100 cannot be read."),
        ("MEVBMSR SET", "5^1" + "0" * 40 + "G^1^^^^", "-1^The birth weight 1" + "0" * 39 + " cannot be read."),
        ("MEVBMSR SET", "5^100K^1^^^^", "-1^The birth weight 100K cannot be read."),
        ("MEVBMSR SET", "5^^25^^^^", "-1^The birth order 25 is not possible."),
        ("MEVBMSR SET", "5^^1^5X^^^", "-1^The age 5X cannot be read."),
        ("MEVBMSR SET", "5^^1^999M^^^", "-1^The age 999M cannot be read."),
        ("MEVBMSR SET", "5^^1^^^^5", "-1^The patient cannot be the mother or guardian."),
        ("MEVVIF SET", "x^{visit5}^2", "-1^There is no such record."),
        ("MEVVIF SET", "^x^2", "-1^The visit is not known."),
        ("MEVVIF SET", "^99999999^2", "-1^The visit 99999999 does not exist."),
        ("MEVVIF SET", "{feeding}^{visit2}^2", "-1^The record belongs to another patient."),
        ("MEVVTXC SET", "{locked}^{visit2}^P^01/02/2026^1", "-1^The record is locked."),
        ("MEVVTXC DEL", "{locked}", "-1^The record is locked."),
        ("MEVVTXC SET", f"^{{visit2}}^P^{TOMORROW}^1", "-1^The contract cannot begin in the future."),
        ("MEVVTXC SET", "^{visit2}^P^01/02/2026^999", "-1^The provider is not known."),
        ("MEVVTXC SET", "^{visit2}^X^01/02/2026^1", "-1^The type of contract is not known."),
        ("MEVVTXC SET", "^{visit2}^P^12/31/1799^1", "-1^12/31/1799 is outside the years 1800 to 2699."),
        ("MEVVTXC SET", "^{visit2}^P^01/01/1800^1", "1"),
        ("MEVVTXC SET", "^{visit2}^P^02/29/2023^1", "-1^The date initiated is not a date."),
        ("MEVVTXC SET", "^{visit2}^P^13/01/2023^1", "-1^The date initiated is not a date."),
        ("MEVVTXC SET", "^{visit2}^P^01/00/2023^1", "-1^The date initiated is not a date."),
        ("MEVVTXC SET", "^{visit2}^P^01/02/2023 23:60^1", "-1^The date initiated is not a date."),
        ("MEVVTXC SET", "^{visit2}^P^01/02/2023 24:00^1", "-1^The date initiated is not a date."),
        ("MEVVTXC SET", "^{visit2}^P^01/02/2023 23:59^1", "1"),
        ("MEVVAST SET", "^{visit2}^2^150^150^100", "1"),
        ("MEVVAST SET", "^{visit2}^2^^^700", "1"),
        ("MEVVAST SET", "^{visit2}^2^151", "-1^The lung function value 151 is not possible."),
        ("MEVVAST SET", "^{visit2}^2^80.5", "-1^The lung function value 80.5 is not possible."),
        ("MEVVAST SET", "^{visit2}^2^^^99", "-1^The lung function value 99 is not possible."),
        ("MEVVAST SET", "^{visit2}^2^^^701", "-1^The lung function value 701 is not possible."),
        ("MEVVAST SET", "^{visit2}^2^^^^Perhaps", "-1^The answer Perhaps is not Yes or No."),
        ("MEVVELD SET", "^{visit2}^ALONE", "-1^The answer ALONE is not known."),
        ("MEVVER SET", "^{visit2}^E^A^W^^^^^^3260102.24^^^LOC.`1", "1"),
        ("MEVVER SET", "^{visit2}^E^A^W^^^^^^3260102.235959^^^VEN.`1", "1"),
        ("MEVVER SET", "^{visit2}^E^A^W^^^^^^3260102.25^^", "-1^The departure 3260102.25 is not a date."),
        ("MEVVER SET", "^{visit2}^E^A^W^^^^^^3260102.096^^", "-1^The departure 3260102.096 is not a date."),
        ("MEVVER SET", "^{visit2}^E^A^W^^^^^^3260102.09006^^", "-1^The departure 3260102.09006 is not a date."),
        ("MEVVER SET", "^{visit2}^E^A^W^^^^^^3260230^^", "-1^The departure 3260230 is not a date."),
        ("MEVVER SET", "^{visit2}^E^A^W^^^^^^^^^XXX.`1", "-1^The place of the transfer is not known."),
        ("MEVVER SET", "^{visit2}^E^A^W^^^^^^^^^LOC.`99", "-1^The place of the transfer is not known."),
        ("MEVVER SET", "^{visit2}^E^A^W^" + LONG + "x", "-1^The other means of arrival is longer than 200 characters."),
        ("MEVVER GET", "^x", "-1^There is no such record."),
        ("MEVVER GET", "^99999", "-1^The record 99999 does not exist any more."),
        ("MEVREF GET", "13^x", "-1^There is no such refusal."),
        ("MEVREF GET", "14^{refusal}", "-1^The refusal {refusal} does not exist any more."),
        ("MEVREF SET", "{lockedref}^EXAM^1^13^01/02/2026^", "-1^The refusal is locked."),
        ("MEVREF SET", "{refusal}^EXAM^1^14^01/02/2026^", "-1^The refusal belongs to another patient."),
        ("MEVREF SET", "^EXAM^1^999999^01/02/2026^", "-1^There is no patient 999999."),
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
    ],
    "ROLLINS,COLE": [
        ("MEVVAST SETREG", "11^X", "-1^The registry status must be A or I."),
        ("MEVVAST SETREG", "999999^A", "-1^There is no patient 999999."),
        ("MEVVAST SETREG", "14^I", "1"),
        ("MEVVAST GETREG", "14", ""),
        ("MEVVAST SETREG", "11^A^x", "-1^x is not a date."),
        ("MEVVAST SETREG", "11^A^^^^999", "-1^The case manager is not known."),
        ("MEVVAST SETREG", "11^A^^^^^" + "x" * 4001, "-1^The comment is longer than 4,000 characters."),
        ("MEVVAST SETREG", "11^A^^^^1^Line", "1"),
        ("MEVVAST SETREG", "11^A^01/02/2026", "1"),
        ("MEVVAST GETREG", "11", "11^ACTIVE|A^01/02/2026^^^SORREL,ADA|1"),
        ("MEVVAST GETNOTE", "11", ""),
    ],
    "PACT,MILO": [("MEVBMSR SET", "6^^^^^^", "-1^You hold neither the PROVIDER key nor the MEVZ PEDIATRIC EDIT key.")],
    "BRIGHTWATER,NELL": [
        ("MEVVAST DEL", "1", "-1^You hold neither the PROVIDER key nor the MEVZ ASTHMA EDIT key."),
        ("MEVBMSR SET", "7^1 1^3^^^^", "1"),
    ],
    "GLASS,VIOLA": [("MEVREP SET", "4^G0P0LC0SA0TA0^^^^0^^", "-1^You hold the MEVZ VIEW ONLY key.")],
    "BARE,JUNO": [
        ("MEVREP SET", "4^G0P0LC0SA0TA0^^^^0^^", "-1^You hold neither the PROVIDER key nor the MEVZ REP HIST EDIT key."),
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
        ("MEVREP SET", "4^G0P0LC0SA0TA0^^^^0^^", "-1^Editing of the reproductive history is disabled for your user class."),
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
                if reply != expected:
                    failed += 1
                    print(f"{user}: {call} {parameter[:100]}\n  expected {expected!r}\n  got      {reply[:300]!r}")
            session.close()
    sys.exit(failed != 0)


main(sys.argv[1])
