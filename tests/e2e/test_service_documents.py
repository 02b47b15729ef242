"""The first documents a client reads, over HTTP through lighttpd: service
root, service document, metadata, registries and schemas, and the static
files they point at."""

import xml.etree.ElementTree as ElementTree

import pytest

from schema_validation import validate

EDMX = "{http://docs.oasis-open.org/odata/ns/edmx}"


class AdminReader:
    """Reads paths of a BMC with the administrator's Basic credentials."""

    def __init__(self, bmc):
        self.bmc = bmc
        self.http = bmc.admin()

    def get(self, path):
        return self.http.get(self.bmc.url(path), timeout=10)


@pytest.fixture(scope="module")
def session(closed_bmc):
    """What the documents are read through; anything with get(path)."""
    reader = AdminReader(closed_bmc)
    yield reader
    reader.http.close()


def read_json(session, path):
    answer = session.get(path)
    assert answer.status_code == 200, path
    assert answer.headers["Content-Type"] == "application/json; charset=UTF-8", path
    return answer.json()


def read_resource(session, path):
    """A Redfish resource that satisfies its DMTF schema."""
    body = read_json(session, path)
    validate(body)
    return body


def read_static_json(session, path):
    """A JSON file that lighttpd serves itself."""
    answer = session.get(path)
    assert answer.status_code == 200, path
    assert answer.headers["Content-Type"].startswith("application/json"), path
    return answer.json()


def test_service_root_is_the_same_with_or_without_trailing_slash(session):
    root = read_resource(session, "/redfish/v1")
    assert read_json(session, "/redfish/v1/") == root
    assert root["@odata.id"] == "/redfish/v1/"
    assert root["Id"] == "RootService"
    assert root["Links"]["Sessions"] == {"@odata.id": "/redfish/v1/SessionService/Sessions"}
    # Several service processes answer; the UUID is the BMC's, not theirs.
    assert {read_json(session, "/redfish/v1")["UUID"] for _ in range(4)} == {root["UUID"]}


def test_service_document_lists_what_the_root_links(session):
    answer = session.get("/redfish/v1/odata")
    assert answer.status_code == 200
    assert answer.headers["Content-Type"] == "application/json; charset=UTF-8"
    assert int(answer.headers["Content-Length"]) == len(answer.content)
    document = answer.json()
    assert document["@odata.context"] == "/redfish/v1/$metadata"
    entries = document["value"]
    assert [entry["name"] for entry in entries][:4] == ["Service", "Systems", "Chassis", "Managers"]
    assert len(entries) == 13 and {entry["kind"] for entry in entries} == {"Singleton"}

    root = read_json(session, "/redfish/v1")
    linked = {name: value["@odata.id"] for name, value in root.items()
              if isinstance(value, dict) and "@odata.id" in value}
    linked.update({name: value["@odata.id"] for name, value in root["Links"].items()})
    for entry in entries[1:]:
        assert linked[entry["name"]] == entry["url"], entry


def test_metadata_references_only_served_csdl_files(session):
    answer = session.get("/redfish/v1/$metadata")
    assert answer.status_code == 200
    assert answer.headers["Content-Type"] == "application/xml"
    edmx = ElementTree.fromstring(answer.content)
    assert edmx.tag == EDMX + "Edmx" and edmx.get("Version") == "4.0"
    references = edmx.findall(EDMX + "Reference")
    uris = [reference.get("Uri") for reference in references]
    assert "/schemas/v1/ServiceRoot_v1.xml" in uris
    for reference in references:
        assert reference.findall(EDMX + "Include"), reference.get("Uri")
        csdl = session.get(reference.get("Uri"))
        assert csdl.status_code == 200, reference.get("Uri")
        ElementTree.fromstring(csdl.content)
    assert edmx.find(EDMX + "DataServices") is not None


def test_oem_registry_declares_the_arguments_its_messages_take(session):
    registry = read_static_json(session, "/registries/TWR.1.0.0.json")
    validate(registry)
    assert registry["RegistryPrefix"] == "TWR" and registry["RegistryVersion"] == "1.0.0"
    for name, message in registry["Messages"].items():
        assert message["NumberOfArgs"] == len(message.get("ParamTypes", [])), name
        for argument in range(1, message["NumberOfArgs"] + 1):
            assert "%%%d" % argument in message["Message"], name


@pytest.mark.parametrize("path", [
    "/redfish/v1/Registries/Base.v1_10_2",
    "/redfish/v1/Registries/BaseXv1_10_3",
    "/redfish/v1/JsonSchemas/Nope",
    "/redfish/v1/JsonSchemas/CertificateService",
])
def test_unknown_registries_and_schemas_are_not_found(session, path):
    assert session.get(path).status_code == 404
