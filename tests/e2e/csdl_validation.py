"""Checks a Redfish body against the DMTF CSDL schemas on disk, for the types
whose JSON schema the DMTF bundle leaves out.

The resource's own type is read exactly as "@odata.type" names it: its
properties are those of that version and the versions it derives from, so a
property of a later version is reported. Complex types named without a
version accept the properties of every version. Checked: unknown
properties, primitive types, enumeration members, null where the schema
forbids it, links, arrays, and the properties annotated as required.
Annotations ("@...") are not checked; an "Oem" object is checked against
the service's own CSDL when it names its type.
"""

import glob
import os
import xml.etree.ElementTree as ElementTree
from functools import lru_cache

from bmc_instance import SOURCE_DIR

CSDL_DIR = os.environ.get(
    "REDFISH_CSDL_DIR", os.path.join(SOURCE_DIR, "..", "shared", "redfish", "csdl"))
OEM_CSDL_DIR = os.path.join(SOURCE_DIR, "deploy", "schemas")
EDM = "{http://docs.oasis-open.org/odata/ns/edm}"
STRINGS = {"Edm.String", "Edm.DateTimeOffset", "Edm.Duration", "Edm.Guid", "Edm.TimeOfDay",
           "Edm.Date"}
INTEGERS = {"Edm.Int64", "Edm.Int32", "Edm.Int16", "Edm.Byte", "Edm.SByte"}
NUMBERS = INTEGERS | {"Edm.Decimal", "Edm.Double", "Edm.Single"}


class CsdlMissing(AssertionError):
    """The CSDL bundle does not define a type a body names."""


class _Model:
    def __init__(self):
        self.types = {}
        self.derived = {}
        for path in sorted(glob.glob(os.path.join(CSDL_DIR, "*.xml")) +
                           glob.glob(os.path.join(OEM_CSDL_DIR, "*.xml"))):
            for schema in ElementTree.parse(path).getroot().iter(EDM + "Schema"):
                namespace = schema.get("Namespace")
                for element in schema:
                    if element.get("Name"):
                        name = namespace + "." + element.get("Name")
                        self.types[name] = element
                        if element.get("BaseType"):
                            self.derived.setdefault(element.get("BaseType"), []).append(name)

    def kind(self, name):
        element = self.types.get(name)
        return element.tag[len(EDM):] if element is not None else None

    def chain(self, name):
        """The type and the types it derives from."""
        while name in self.types:
            yield self.types[name]
            name = self.types[name].get("BaseType")

    def family(self, name):
        """The type and every type derived from it, at any version."""
        names, index = [name], 0
        while index < len(names):
            names.extend(self.derived.get(names[index], []))
            index += 1
        return names

    def properties(self, name, exact):
        found = {}
        for member in (self.chain(name) if exact else
                       (element for each in self.family(name) for element in self.chain(each))):
            for prop in member:
                if prop.tag in (EDM + "Property", EDM + "NavigationProperty"):
                    found.setdefault(prop.get("Name"), prop)
        return found


@lru_cache(maxsize=None)
def _model():
    return _Model()


def _annotated(prop, term):
    return any(annotation.get("Term") == term for annotation in prop.iter(EDM + "Annotation"))


class _Checker:
    def __init__(self, model):
        self.model = model
        self.faults = []

    def fault(self, path, text):
        self.faults.append("%s: %s" % (path or "/", text))

    def check_object(self, value, type_name, path, exact, excerpt=False):
        if not isinstance(value, dict):
            self.fault(path, "not an object")
            return
        props = self.model.properties(type_name, exact)
        for name, prop in props.items():
            if not excerpt and _annotated(prop, "Redfish.Required") and name not in value:
                self.fault(path, "required property %s is missing" % name)
        for name, item in value.items():
            if "@" in name or name.startswith("#"):
                continue
            if name not in props:
                self.fault(path, "property %s is not in %s" % (name, type_name))
            elif name == "Oem":
                self.check_oem(item, path + "/Oem")
            else:
                self.check_value(item, props[name], path + "/" + name)

    def check_oem(self, value, path):
        for vendor, extension in (value.items() if isinstance(value, dict) else []):
            type_name = extension.get("@odata.type", "").lstrip("#") if isinstance(extension, dict) else ""
            if type_name:
                if self.model.kind(type_name) is None:
                    self.fault(path, "no CSDL for %s" % type_name)
                else:
                    self.check_object(extension, type_name, path + "/" + vendor, exact=True)

    def check_value(self, value, prop, path):
        type_name = prop.get("Type")
        if value is None:
            if prop.get("Nullable") == "false":
                self.fault(path, "null where %s is not nullable" % type_name)
            return
        if type_name.startswith("Collection("):
            if not isinstance(value, list):
                self.fault(path, "not an array of %s" % type_name)
                return
            for index, item in enumerate(value):
                self.check_single(item, type_name[len("Collection("):-1], prop, "%s/%d" % (path, index))
        else:
            self.check_single(value, type_name, prop, path)

    def check_single(self, value, type_name, prop, path):
        if prop.tag == EDM + "NavigationProperty":
            if _annotated(prop, "Redfish.ExcerptCopy"):
                self.check_object(value, type_name, path, exact=False, excerpt=True)
            elif not isinstance(value, dict) or not isinstance(value.get("@odata.id"), str):
                self.fault(path, "not a link")
            return
        kind = self.model.kind(type_name)
        if kind == "TypeDefinition":
            type_name = self.model.types[type_name].get("UnderlyingType")
            kind = None
        if kind == "EnumType":
            members = {member.get("Name") for each in self.model.family(type_name)
                       for member in self.model.types[each].iter(EDM + "Member")}
            if value not in members:
                self.fault(path, "%r is not a member of %s" % (value, type_name))
        elif kind in ("ComplexType", "EntityType"):
            self.check_object(value, type_name, path, exact=False)
        elif type_name == "Edm.PrimitiveType":
            if not isinstance(value, (str, int, float)):
                self.fault(path, "%r is not a primitive value" % (value,))
        elif type_name in STRINGS:
            if not isinstance(value, str):
                self.fault(path, "%r is not a string" % (value,))
        elif type_name == "Edm.Boolean":
            if not isinstance(value, bool):
                self.fault(path, "%r is not a boolean" % (value,))
        elif type_name in NUMBERS:
            wanted = int if type_name in INTEGERS else (int, float)
            if isinstance(value, bool) or not isinstance(value, wanted):
                self.fault(path, "%r is not a %s" % (value, type_name))
        else:
            self.fault(path, "unknown type %s" % type_name)


def validate(body):
    """Raises AssertionError listing every fault of body against the CSDL
    type its "@odata.type" names; "@odata.id" is the caller's to check, as
    registry files have none."""
    model = _model()
    type_name = body.get("@odata.type", "").lstrip("#")
    if model.kind(type_name) != "EntityType":
        raise CsdlMissing("no CSDL entity type %r" % type_name)
    checker = _Checker(model)
    checker.check_object(body, type_name, "", exact=True)
    if checker.faults:
        raise AssertionError("%s %s:\n  %s" % (type_name, body.get("@odata.id"),
                                               "\n  ".join(checker.faults)))


def validate_oem(body):
    """Raises AssertionError listing every fault of the "Oem" object of a
    body against the service's own CSDL."""
    checker = _Checker(_model())
    checker.check_oem(body.get("Oem"), "")
    if checker.faults:
        raise AssertionError("%s:\n  %s" % (body.get("@odata.id"), "\n  ".join(checker.faults)))
