"""Validates Redfish bodies against the DMTF JSON schemas on disk.

validate(body) reads the schema from the body's "@odata.type": the file of
that exact version, or else the newest errata of the same minor version
(errata change no payload), or the unversioned file for collections. Every
"$ref" to http://redfish.dmtf.org/schemas/v1/ is read from the same local
directory; nothing is fetched from the network.

A body whose schema file is missing fails. So does any reference into a
missing file, with one exception: a whole-resource reference such as
"CertificateService.json#/definitions/CertificateService", which a service
root or a collection uses for its links, is checked as a plain link
({"@odata.id": ...}) when the DMTF bundle has no JSON form of that schema.
validate() returns the names of the schemas it checked that way.
"""

import glob
import json
import os
import re
from functools import lru_cache
from urllib.parse import urldefrag

import jsonschema

from bmc_instance import SOURCE_DIR

SCHEMA_DIR = os.environ.get(
    "REDFISH_SCHEMA_DIR", os.path.join(SOURCE_DIR, "..", "shared", "redfish", "json-schema"))
DMTF_PREFIX = "http://redfish.dmtf.org/schemas/v1/"
LINK_SCHEMA = {"$ref": DMTF_PREFIX + "odata-v4.json#/definitions/idRef"}
ODATA_TYPE = re.compile(
    r"^#(?P<schema>[A-Za-z0-9]+)(\.(?P<version>v\d+_\d+_\d+))?\.(?P<type>[A-Za-z0-9]+)$")


class SchemaMissing(AssertionError):
    """The DMTF bundle has no JSON schema for what a body needs."""


def _local_path(url):
    if not url.startswith(DMTF_PREFIX):
        raise SchemaMissing("not a DMTF schema URL, refusing to fetch: " + url)
    return os.path.join(SCHEMA_DIR, url[len(DMTF_PREFIX):])


@lru_cache(maxsize=None)
def _load(url):
    path = _local_path(url)
    if not os.path.isfile(path):
        raise SchemaMissing("no JSON schema file " + path)
    with open(path, encoding="utf-8") as schema:
        return json.load(schema)


def _schema_file(odata_type):
    """The file name that describes an "@odata.type"."""
    match = ODATA_TYPE.match(odata_type or "")
    if not match:
        raise SchemaMissing("not a Redfish @odata.type: %r" % (odata_type,))
    schema, version = match.group("schema"), match.group("version")
    if version is None:
        return schema + ".json"
    exact = "%s.%s.json" % (schema, version)
    if os.path.isfile(os.path.join(SCHEMA_DIR, exact)):
        return exact
    minor = version.rsplit("_", 1)[0]
    errata = glob.glob(os.path.join(SCHEMA_DIR, "%s.%s_*.json" % (schema, minor)))
    if not errata:
        raise SchemaMissing("no JSON schema for %s in %s" % (odata_type, SCHEMA_DIR))
    newest = max(errata, key=lambda path: int(path.rsplit("_", 1)[1].split(".")[0]))
    return os.path.basename(newest)


class _LocalResolver(jsonschema.RefResolver):
    def __init__(self, base_uri, referrer):
        super().__init__(base_uri, referrer, handlers={"http": _load, "https": _load})
        self.links_only = set()

    def resolve_from_url(self, url):
        document, fragment = urldefrag(url)
        name = ""
        if document.startswith(DMTF_PREFIX) and document.endswith(".json"):
            name = document[len(DMTF_PREFIX):-len(".json")]
        if name and fragment == "/definitions/" + name and not os.path.isfile(_local_path(document)):
            self.links_only.add(name)
            return LINK_SCHEMA
        return super().resolve_from_url(url)


def validate(body):
    """Raises when body does not satisfy its DMTF schema; returns the names
    of the link targets that were checked as plain links only."""
    odata_type = body.get("@odata.type")
    url = DMTF_PREFIX + _schema_file(odata_type)
    document = _load(url)
    type_name = odata_type.rsplit(".", 1)[1]
    if type_name not in document.get("definitions", {}):
        raise SchemaMissing("%s defines no %s" % (url, type_name))
    resolver = _LocalResolver(url, document)
    schema = {"$ref": url + "#/definitions/" + type_name}
    jsonschema.Draft7Validator(schema, resolver=resolver).validate(body)
    return resolver.links_only


MESSAGE_SCHEMA = DMTF_PREFIX + "Message.v1_1_4.json"


def validate_messages(body):
    """Checks an error or result body: one outer member holding "code" and
    "Message", and every extended-information entry a DMTF Message."""
    assert len(body) == 1, body
    inner = next(iter(body.values()))
    assert isinstance(inner["code"], str) and inner["code"].startswith("Base.v1_10_3."), body
    assert isinstance(inner["Message"], str), body
    document = _load(MESSAGE_SCHEMA)
    resolver = _LocalResolver(MESSAGE_SCHEMA, document)
    schema = {"$ref": MESSAGE_SCHEMA + "#/definitions/Message"}
    for entry in inner.get("@Message.ExtendedInfo", []):
        jsonschema.Draft7Validator(schema, resolver=resolver).validate(entry)
