"""The whole published URI space, crawled from /redfish/v1 through lighttpd
with the administrator's credentials: every link answers 200 and every body
is what its DMTF schema says."""

import xml.etree.ElementTree as ElementTree

import pytest

import csdl_validation
import schema_validation
from uri_crawler import METADATA, ROOT, bodies, crawl, named_values

EDMX = "{http://docs.oasis-open.org/odata/ns/edmx}"


@pytest.fixture(scope="module")
def crawled(bmc):
    return crawl(bmc)


def test_every_published_uri_answers(crawled):
    failed = {uri: status for uri, (status, _, _) in crawled.items() if status != 200}
    assert not failed
    assert len(crawled) > 100


def validate(body):
    """Checks a body against its JSON schema, or its CSDL where the DMTF
    bundle has no JSON schema of its version (its JSON subset lacks most
    types); returns False when neither exists."""
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
            csdl_validation.validate_oem(body)
        except AssertionError as fault:
            faults.append("%s: %s" % (uri, str(fault)[:2000]))
    assert not faults, "\n".join(faults)
    assert not unvalidated, "no DMTF schema describes these types"


def test_metadata_names_every_type_served(bmc, crawled):
    status, kind, _ = crawled[METADATA]
    assert status == 200 and kind.startswith("application/xml")
    document = ElementTree.fromstring(bmc.admin().get(bmc.url(METADATA), timeout=10).content)
    included = {include.get("Namespace") for include in document.iter(EDMX + "Include")}
    served = {value.lstrip("#").rsplit(".", 1)[0] for _, body in bodies(crawled)
              for name, value in named_values(body) if name == "@odata.type"}
    served = {name for name in served if not name.startswith(("MessageRegistry.", "AttributeRegistry."))}
    assert served - included == set()
    session = bmc.admin()
    for reference in document.iter(EDMX + "Reference"):
        assert session.get(bmc.url(reference.get("Uri")), timeout=10).status_code == 200, reference.get("Uri")
