"""Exports in FHIR against the JSON schema of FHIR R4, and against what that schema accepts although it is wrong.

Exports the sample patients by the host program without a window, and takes lists of hostile records from another
program. Every check must also find planted faults.
"""

import copy
import datetime
import hashlib
import json
import lzma
import os
import pathlib
import re
import stat
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

try:
    import jsonschema
except ImportError:
    print("python3-jsonschema is missing.")
    sys.exit(77)

HOST, SERVER, LIBRARY, HOSTILE = sys.argv[1:]
SCHEMA = pathlib.Path(__file__).parent / "fhir.schema.json.xz"
SCHEMA_DIGEST = "15b9548af6412c44faaa411456e0652542de286fd1c58ef882b09bdc8947909d"
STORIES = range(1, 20)
LOADED = 15  # with thousands of records
MOST_AGAINST_SCHEMA = 60  # resources of one patient; they are alike
XHTML = "{http://www.w3.org/1999/xhtml}"
LOCAL = "https://personal-health.example/codes"
# The only public codes that are certain, written down a second time.
PUBLIC = {
    "http://loinc.org": {"11996-6", "11977-6", "11638-4", "11614-5", "11613-7", "8665-2", "82810-3", "11778-8",
                         "8339-4"},
    "http://snomed.info/sct": {"77386006", "427679007", "426979002", "427295004", "426656000"},
    "http://terminology.hl7.org/CodeSystem/observation-category": {"social-history", "vital-signs", "survey"},
    "http://terminology.hl7.org/CodeSystem/v3-ActReason": {"PATOBJ"},
    "http://terminology.hl7.org/CodeSystem/data-absent-reason": {"unknown"},
}
# Required members beside those that the schema requires, and the codes of status that mean what is exported.
REQUIRED = {
    "Observation": ["status", "code", "subject"],
    "Immunization": ["status", "statusReason", "vaccineCode", "patient"],
    "MedicationStatement": ["status", "medicationCodeableConcept", "subject"],
    "Procedure": ["status", "subject"],
    "Contract": ["subject"],
    "RelatedPerson": ["patient"],
    "Patient": ["identifier", "gender"],
}
STATUS = {"Observation": "final", "Immunization": "not-done", "MedicationStatement": "not-taken",
          "Procedure": "not-done"}
DATES = {"effectiveDateTime", "valueDateTime", "occurrenceDateTime", "performedDateTime", "issued", "birthDate"}
DATE = re.compile(r"(\d{4})(?:-(\d\d)(?:-(\d\d)(T\d\d:\d\d:\d\d(?:Z|[+-]\d\d:\d\d))?)?)?")
URL = re.compile(r"urn:uuid:[0-9a-f]{8}-[0-9a-f]{4}-5[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}")


class Schema:
    def __init__(self):
        text = lzma.decompress(SCHEMA.read_bytes())
        assert hashlib.sha256(text).hexdigest() == SCHEMA_DIGEST
        self.schema = json.loads(text)
        self.validators = {}

    def faults(self, resource):
        """Checks against the definition of its own type: the choice between all types takes long and says little."""
        kind = resource.get("resourceType")
        if kind not in self.schema["definitions"]:
            return [f"no resource {kind}"]
        if kind not in self.validators:
            whole = {"$ref": f"#/definitions/{kind}", "definitions": self.schema["definitions"]}
            self.validators[kind] = jsonschema.Draft6Validator(whole)
        return [f"{kind} {'/'.join(map(str, fault.path))}: {fault.message[:150]}"
                for fault in self.validators[kind].iter_errors(resource)]


def nodes(value, name=""):
    """All values inside a value, with the names of their members."""
    yield name, value
    if isinstance(value, dict):
        for key, inner in value.items():
            yield from nodes(inner, key)
    elif isinstance(value, list):
        for inner in value:
            yield from nodes(inner, name)


def date_fault(text):
    found = DATE.fullmatch(text)
    if not found:
        return f"{text} is not a date"
    year, month, day, time = found.groups()
    try:
        datetime.date(int(year), int(month or 1), int(day or 1))
        if time:
            datetime.datetime.fromisoformat(text.replace("Z", "+00:00"))
    except ValueError as fault:
        return f"{text}: {fault}"
    return ""


def narrative_fault(resource):
    text = resource.get("text", {})
    if text.get("status") != "generated":
        return "no generated narrative"
    try:
        root = xml.etree.ElementTree.fromstring(text.get("div", ""))
    except xml.etree.ElementTree.ParseError as fault:
        return f"narrative: {fault}"
    if root.tag != XHTML + "div" or len(root) or not (root.text or "").strip():
        return "narrative is not a div with text"
    return ""


def value_faults(holder):
    values = [key for key in holder if key.startswith("value")]
    if len(values) > 1:
        yield "two values"
    if values and "dataAbsentReason" in holder:
        yield "a value and a reason why it is absent"
    if not values and "dataAbsentReason" not in holder and "component" not in holder:
        yield "neither a value nor components"


def observation_faults(resource):
    yield from value_faults(resource)
    own = {coding["code"] for coding in resource.get("code", {}).get("coding", [])}
    for part in resource.get("component", []):
        yield from value_faults(part)
        if own & {coding["code"] for coding in part.get("code", {}).get("coding", [])}:
            yield "a component repeats the code"


def resource_faults(resource):
    kind = resource.get("resourceType")
    if kind not in REQUIRED:
        yield f"an unexpected {kind}"
        return
    for member in REQUIRED[kind]:
        if member not in resource:
            yield f"{kind} without {member}"
    if resource.get("status") != STATUS.get(kind):
        yield f"{kind} with status {resource.get('status')}"
    yield narrative_fault(resource)
    if kind == "Observation":
        yield from observation_faults(resource)
    if kind == "Immunization" and not ("occurrenceDateTime" in resource) ^ ("_occurrenceDateTime" in resource):
        yield "Immunization without an occurrence, or with two"


def node_faults(name, value):
    if value in ({}, [], "", None) or (isinstance(value, str) and not value.strip()):
        yield f"{name} is empty"
    if name in DATES and isinstance(value, str):
        yield date_fault(value)
    if not isinstance(value, dict):
        return
    if "system" in value and "code" in value:
        if "value" not in value and value["system"] != LOCAL and value["code"] not in PUBLIC.get(value["system"], ()):
            yield f"{value['system']} {value['code']} is not a certain code"
    elif "code" in value and "value" in value and "unit" in value:
        yield "a quantity with a code and no system"
    if "coding" in value and "text" not in value and name not in ("category", "dataAbsentReason"):
        yield f"{name} without the stored words"


def bundle_faults(bundle):
    if bundle.get("resourceType") != "Bundle" or bundle.get("type") != "collection":
        yield "not a collection"
    if "total" in bundle:
        yield "a total in a collection"
    entries = bundle.get("entry", [])
    urls = [entry.get("fullUrl", "") for entry in entries]
    if len(set(urls)) != len(urls):
        yield "a fullUrl twice"
    yield from (f"fullUrl {url}" for url in urls if not URL.fullmatch(url))
    yield from ("a request" for entry in entries if "request" in entry)
    kinds = [entry["resource"].get("resourceType") for entry in entries]
    if kinds[:1] != ["Patient"] or kinds.count("Patient") != 1:
        yield "not one patient at the beginning"
    for entry in entries:
        yield from resource_faults(entry["resource"])
    for name, value in nodes(bundle):
        yield from node_faults(name, value)
        if name == "reference" and value not in urls:
            yield f"a reference to {value}"


def faults_of(bundle, schema):
    found = [fault for fault in bundle_faults(bundle) if fault]
    for entry in bundle["entry"][:MOST_AGAINST_SCHEMA]:
        found += schema.faults(entry["resource"])
    envelope = {**bundle, "entry": [{**entry, "resource": {"resourceType": "Basic", "code": {"text": "x"}}}
                                    for entry in bundle["entry"][:2]]}
    return found + schema.faults(envelope)


def first(bundle, kind, member):
    return next(entry["resource"] for entry in bundle["entry"]
                if entry["resource"]["resourceType"] == kind and member in entry["resource"])


def planted():
    """Each takes a complete bundle and makes it wrong; the schema accepts most of them."""
    def observation(bundle, member="valueInteger"):
        return first(bundle, "Observation", member)
    return [
        lambda b: observation(b).pop("status"),
        lambda b: observation(b).update(status="done"),
        lambda b: observation(b).update(valueString="two"),
        lambda b: observation(b).update(dataAbsentReason={"text": "none"}),
        lambda b: observation(b).update(note=[]),
        lambda b: observation(b).update(method={}),
        lambda b: observation(b).update(unknown="x"),
        lambda b: observation(b).update(effectiveDateTime="2026-02-30"),
        lambda b: observation(b).update(effectiveDateTime="2026-02-03T10:00"),
        lambda b: observation(b).update(effectiveDateTime="2026-02-03T10:00:00"),
        lambda b: observation(b)["subject"].update(reference="urn:uuid:00000000-0000-5000-8000-000000000000"),
        lambda b: observation(b)["code"]["coding"].append({"system": "http://loinc.org", "code": "8678-5"}),
        lambda b: observation(b)["code"].pop("text"),
        lambda b: observation(b)["text"].update(div="<div xmlns=\"http://www.w3.org/1999/xhtml\">&nbsp;</div>"),
        lambda b: observation(b)["text"].update(div="<div>text</div>"),
        lambda b: observation(b, "valueQuantity")["valueQuantity"].pop("system"),
        lambda b: observation(b, "component")["component"][0].update(code=observation(b, "component")["code"]),
        lambda b: first(b, "Immunization", "occurrenceDateTime").pop("occurrenceDateTime"),
        lambda b: first(b, "Immunization", "status").update(status="refused"),
        lambda b: first(b, "Patient", "gender").update(gender="F"),
        lambda b: first(b, "Patient", "gender").update(birthDate="1996-02-30"),
        lambda b: b["entry"].append(copy.deepcopy(b["entry"][1])),
        lambda b: b["entry"].pop(0),
        lambda b: b["entry"][1].pop("fullUrl"),
        lambda b: b["entry"][1].update(fullUrl=b["entry"][1]["fullUrl"].upper()),
        lambda b: b["entry"][1].update(request={"method": "GET", "url": "x"}),
        lambda b: b.update(total=3),
        lambda b: b.update(type="batch"),
    ]


def run_host(folder, *options):
    return subprocess.run([HOST, "--user", "SORREL,ADA", "--data", folder + "/data", "--server-program", SERVER,
                           *options], capture_output=True, text=True, timeout=60, check=False,
                          env={**os.environ, "HOME": folder, "XDG_DATA_HOME": folder + "/share",
                               "XDG_CONFIG_HOME": folder + "/config", "PERSONAL_HEALTH_COMPONENTS": folder + "/parts",
                               "QT_QPA_PLATFORM": "offscreen", "TZ": "America/Denver"})


def sample_bundles(folder):
    """The bundles of the sample patients, and what is wrong with the program's answers."""
    bundles, wrong = {}, []
    path = folder + "/bundle.json"
    for patient in STORIES:
        done = run_host(folder, "--patient", str(patient), "--fhir", path)
        if done.returncode != 0 or done.stdout or done.stderr.startswith("The"):
            wrong.append(f"patient {patient}: exit {done.returncode}, {done.stdout}{done.stderr}")
            continue
        if stat.S_IMODE(os.stat(path).st_mode) != 0o600:
            wrong.append("others can read the file")
        bundles[f"patient {patient}"] = json.loads(pathlib.Path(path).read_text(encoding="utf-8"))
        os.chmod(path, 0o644)  # the next export replaces a file that others can read
    first_bytes = pathlib.Path(path).read_bytes()
    run_host(folder, "--patient", str(STORIES[-1]), "--fhir", path)
    if pathlib.Path(path).read_bytes() != first_bytes:
        wrong.append("two exports of the same records differ")
    return bundles, wrong


def refusals(folder):
    """The program refuses what it cannot do, says why, and leaves no file."""
    cases = {
        ("--patient", "1", "--fhir", folder): "is a folder",
        ("--patient", "1", "--fhir", "/dev/null"): "is not a regular file",
        ("--patient", "1", "--fhir", folder + "/none/x.json"): "does not exist",
        ("--patient", "999999", "--fhir", folder + "/x.json"): "",
        ("--fhir", folder + "/x.json"): "requires --patient",
    }
    for options, words in cases.items():
        done = run_host(folder, *options)
        if done.returncode == 0 or not done.stderr or words not in done.stderr:
            yield f"{options}: exit {done.returncode}, {done.stderr}"
    if os.path.exists(folder + "/x.json"):
        yield "a refused export left a file"


def content_faults(bundles):
    """A few contents, so that an empty export cannot pass."""
    counts = {}
    for bundle in bundles.values():
        for entry in bundle["entry"]:
            kind = entry["resource"]["resourceType"]
            counts[kind] = counts.get(kind, 0) + 1
    for kind in REQUIRED:
        if kind != "RelatedPerson" and kind not in counts:
            yield f"no {kind} among the sample patients"
    if len(bundles["patient 14"]["entry"]) != 1:
        yield "patient 14 has records"
    if len(bundles[f"patient {LOADED}"]["entry"]) != 5001:
        yield f"patient {LOADED} has {len(bundles[f'patient {LOADED}']['entry'])} entries"
    if not any(re.fullmatch(r".*T\d\d:\d\d:\d\d-0[67]:00", value) for bundle in bundles.values()
               for name, value in nodes(bundle) if name == "effectiveDateTime"):
        yield "no time with the zone of the server's clock"


def main():
    schema = Schema()
    with tempfile.TemporaryDirectory() as folder:
        registered = run_host(folder, "--register", LIBRARY)
        assert registered.returncode == 0, registered.stderr
        bundles, wrong = sample_bundles(folder)
        wrong += refusals(folder)
    wrong += content_faults(bundles)
    hostile = subprocess.run([HOSTILE], capture_output=True, timeout=60, check=True).stdout.decode("utf-8")
    for number, line in enumerate(hostile.splitlines()):
        bundles[f"hostile {number}"] = json.loads(line)
    for name, bundle in bundles.items():
        wrong += [f"{name}: {fault}" for fault in faults_of(bundle, schema)[:5]]
    complete = json.loads(hostile.splitlines()[0])
    for number, plant in enumerate(planted()):
        bad = copy.deepcopy(complete)
        plant(bad)
        if not faults_of(bad, schema):
            wrong.append(f"the planted fault {number} was not found")
    print("\n".join(wrong[:40]))
    sys.exit(bool(wrong))


main()
