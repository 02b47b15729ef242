"""The whole published URI space, crawled from /redfish/v1 through lighttpd
with the administrator's credentials: every link answers 200 and every body
is what its DMTF schema says."""

import xml.etree.ElementTree as ElementTree
from collections import deque

import pytest

import csdl_validation
import schema_validation

ROOT = "/redfish/v1"
METADATA = ROOT + "/$metadata"
MAX_URIS = 3000
# Served by another branch; until it lands these subtrees answer 404.
ABSENT_SUBTREES = ("/redfish/v1/TaskService", "/redfish/v1/UpdateService")
# Types that neither the JSON schemas nor the CSDL of the DMTF bundle
# describe: the service's own Oem extension types.
NOT_VALIDATED = set()
EDMX = "{http://docs.oasis-open.org/odata/ns/edmx}"


def published_links(value):
    """Every "@odata.id" and "@Redfish.ActionInfo" in a body, and every file
    "Uri" of a registry or schema file resource."""
    if isinstance(value, dict):
        for name, item in value.items():
            if name in ("@odata.id", "@Redfish.ActionInfo") and isinstance(item, str):
                yield item.split("#", 1)[0]
            elif name == "Uri" and isinstance(item, str) and item.startswith("/"):
                yield item
            else:
                yield from published_links(item)
    elif isinstance(value, list):
        for item in value:
            yield from published_links(item)


def is_absent_subtree(uri, status):
    return status == 404 and any(uri == top or uri.startswith(top + "/") for top in ABSENT_SUBTREES)


def populate(bmc, session):
    """Gives every collection that starts empty a member to crawl."""
    bmc.bmcsim("eventlog", "add", "146", "crawler was here")
    assert bmc.login().status_code == 201
    subscription = {"Destination": "http://127.0.0.1:9/events", "Protocol": "Redfish"}
    answer = session.post(bmc.url(ROOT + "/EventService/Subscriptions"), json=subscription, timeout=10)
    assert answer.status_code == 201, answer.text


@pytest.fixture(scope="module")
def crawled(bmc):
    """uri -> (status, content type, JSON body or None), breadth first."""
    session = bmc.admin()
    populate(bmc, session)
    seen, queue, answers = {ROOT, METADATA}, deque([ROOT, METADATA]), {}
    while queue:
        assert len(answers) < MAX_URIS, "more URIs than a BMC publishes: a link loop?"
        uri = queue.popleft()
        answer = session.get(bmc.url(uri), timeout=10)
        kind = answer.headers.get("Content-Type", "")
        body = answer.json() if "json" in kind and answer.content else None
        answers[uri] = (answer.status_code, kind, body)
        for link in published_links(body):
            if link not in seen:
                seen.add(link)
                queue.append(link)
    return answers


def test_every_published_uri_answers(crawled):
    failed = {uri: status for uri, (status, _, _) in crawled.items()
              if status != 200 and not is_absent_subtree(uri, status)}
    assert not failed
    assert len(crawled) > 100


def validate(body):
    """Checks a body against its JSON schema, or its CSDL where the bundle
    has no JSON schema of its version; returns False when neither exists."""
    try:
        schema_validation.validate(body)
        return True
    except schema_validation.SchemaMissing:
        pass
    try:
        csdl_validation.validate(body)
        return True
    except csdl_validation.CsdlMissing:
        return False


def bodies(crawled):
    for uri, (status, _, body) in crawled.items():
        if status == 200 and isinstance(body, dict) and "@odata.type" in body:
            yield uri, body


def test_every_resource_names_itself(crawled):
    for uri, body in bodies(crawled):
        if uri.startswith(ROOT):
            assert body.get("@odata.id", "").rstrip("/") == uri.rstrip("/"), uri


def test_every_body_satisfies_its_schema(crawled):
    faults, unvalidated = [], set()
    for uri, body in bodies(crawled):
        try:
            if not validate(body):
                unvalidated.add(body["@odata.type"])
        except AssertionError as fault:
            faults.append("%s: %s" % (uri, str(fault)[:2000]))
    assert not faults, "\n".join(faults)
    assert unvalidated <= NOT_VALIDATED


def odata_types(value):
    if isinstance(value, dict):
        for name, item in value.items():
            if name == "@odata.type":
                yield item
            else:
                yield from odata_types(item)
    elif isinstance(value, list):
        for item in value:
            yield from odata_types(item)


def test_metadata_names_every_type_served(bmc, crawled):
    status, kind, _ = crawled[METADATA]
    assert status == 200 and kind.startswith("application/xml")
    document = ElementTree.fromstring(bmc.admin().get(bmc.url(METADATA), timeout=10).content)
    included = {include.get("Namespace") for include in document.iter(EDMX + "Include")}
    served = {odata_type.lstrip("#").rsplit(".", 1)[0]
              for _, body in bodies(crawled) for odata_type in odata_types(body)}
    served = {name for name in served if not name.startswith(("MessageRegistry.", "AttributeRegistry."))}
    assert served - included == set()
    session = bmc.admin()
    for reference in document.iter(EDMX + "Reference"):
        assert session.get(bmc.url(reference.get("Uri")), timeout=10).status_code == 200, reference.get("Uri")
