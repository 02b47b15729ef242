"""The OCP Server Hardware Management profile and the Baseline profile it
requires (DSP0272 interoperability profiles), read from the DMTF bundle and
checked against every resource that the crawl of a live BMC finds.

Read requirements are checked: properties, their values and counts, the
conditions and use cases that make them mandatory, and actions with their
parameter values. Write requirements are not; the per-resource tests PATCH
what is writable."""

import json
import os
import re

import pytest

from bmc_instance import SOURCE_DIR
from uri_crawler import bodies, crawl

PROFILE_DIR = os.path.join(SOURCE_DIR, "..", "shared", "redfish", "profiles")
PROFILE = "OCPServerHardwareManagement.v1_1_0.json"

# Where a resource of a parent type puts its subordinates.
PARENT_SEGMENTS = {"Manager": "/Managers/", "ComputerSystem": "/Systems/", "Chassis": "/Chassis/"}
# Requirements the simulated BMC does not meet, with the reasons README gives.
MANDATORY_NOT_MET = {
    # No ComputerSystem version admits it: before v1_13 a system has no SerialConsole; from v1_13
    # on it is a HostSerialConsole, which allows only IPMI, SSH, Telnet, WebSocket (v1_26) and
    # MaxConcurrentSessions. ConnectTypesSupported belongs to the Manager's console and the
    # system's GraphicalConsole. The system names its consoles as SerialConsole.IPMI and .SSH.
    "/redfish/v1/Systems/{n}/SerialConsole[]: ConnectTypesSupported is missing",
}
RECOMMENDED_NOT_MET = {
    # The temperatures carry the critical and fatal thresholds only.
    "/redfish/v1/Chassis/{n}/Thermal/Temperatures[]: UpperThresholdNonCritical is missing",
    # Fans and temperatures are served by Thermal; the SATA backplane and the
    # RAID controllers' enclosures have no sensors.
    "/redfish/v1/Chassis/{n}/ThermalSubsystem: Fans is missing",
    "/redfish/v1/Chassis/{n}/ThermalSubsystem: ThermalMetrics is missing",
    "/redfish/v1/Chassis/StorageBackplane: Power is missing",
    "/redfish/v1/Chassis/StorageBackplane: Thermal is missing",
    "/redfish/v1/Chassis/HA-RAID.0.StorageEnclosure.0: Power is missing",
    "/redfish/v1/Chassis/HA-RAID.0.StorageEnclosure.0: Thermal is missing",
    "/redfish/v1/Chassis/MRVL.HA-RAID.0.StorageModule: Power is missing",
    "/redfish/v1/Chassis/MRVL.HA-RAID.0.StorageModule: Thermal is missing",
    # The BMC's LAN speaks IPv4 only, its name servers come with the lease, and it runs no SSDP.
    "/redfish/v1/Managers/{n}/EthernetInterfaces/{n}: DHCPv6 is missing",
    "/redfish/v1/Managers/{n}/EthernetInterfaces/{n}: IPv6AddressPolicyTable is missing",
    "/redfish/v1/Managers/{n}/EthernetInterfaces/{n}: IPv6StaticAddresses is missing",
    "/redfish/v1/Managers/{n}/EthernetInterfaces/{n}: IPv6StaticDefaultGateways is missing",
    "/redfish/v1/Managers/{n}/EthernetInterfaces/{n}: StaticNameServers is missing",
    "/redfish/v1/Managers/{n}/NetworkProtocol: SSDP is missing",
    # The host's side of the host interface speaks IPv4 only, with static settings and no name servers.
    "/redfish/v1/Managers/{n}/HostInterfaces/{n}/HostEthernetInterfaces/{n}: DHCPv6 is missing",
    "/redfish/v1/Managers/{n}/HostInterfaces/{n}/HostEthernetInterfaces/{n}: IPv6AddressPolicyTable is missing",
    "/redfish/v1/Managers/{n}/HostInterfaces/{n}/HostEthernetInterfaces/{n}: IPv6StaticAddresses is missing",
    "/redfish/v1/Managers/{n}/HostInterfaces/{n}/HostEthernetInterfaces/{n}: IPv6StaticDefaultGateways is missing",
    "/redfish/v1/Managers/{n}/HostInterfaces/{n}/HostEthernetInterfaces/{n}: StaticNameServers is missing",
    # The host's operating system configures the host's ports; the BMC does not see it.
    "/redfish/v1/Systems/{n}/EthernetInterfaces/{n}: DHCPv4 is missing",
    "/redfish/v1/Systems/{n}/EthernetInterfaces/{n}: DHCPv6 is missing",
    "/redfish/v1/Systems/{n}/EthernetInterfaces/{n}: IPv4StaticAddresses is missing",
    "/redfish/v1/Systems/{n}/EthernetInterfaces/{n}: IPv6AddressPolicyTable is missing",
    "/redfish/v1/Systems/{n}/EthernetInterfaces/{n}: IPv6StaticAddresses is missing",
    "/redfish/v1/Systems/{n}/EthernetInterfaces/{n}: IPv6StaticDefaultGateways is missing",
    "/redfish/v1/Systems/{n}/EthernetInterfaces/{n}: StaticNameServers is missing",
}


def load_profiles():
    """The profile and every profile it requires, requirements first."""
    profiles, pending = [], [PROFILE]
    while pending:
        with open(os.path.join(PROFILE_DIR, pending.pop())) as source:
            profile = json.load(source)
        profiles.insert(0, profile)
        for name, required in profile.get("RequiredProfiles", {}).items():
            pending.append("%s.v%s.json" % (name, required["MinVersion"].replace(".", "_")))
    return profiles


def resource_type(body):
    return body["@odata.type"].lstrip("#").split(".", 1)[0]


class Checker:
    """Collects unmet requirements as "Mandatory" and "Recommended" lines."""

    def __init__(self, crawled):
        self.crawled = crawled
        self.unmet = {"Mandatory": set(), "Recommended": set()}

    def miss(self, requirement, where, text):
        if requirement in self.unmet:
            # Members of one collection or array count as one.
            where = re.sub(r"/\d+(?=/|$)", "/{n}", re.sub(r"\[\d+\]", "[]", where))
            self.unmet[requirement].add("%s: %s" % (where, text))

    def requirement_of(self, requirement, uri, body):
        """The read requirement after its conditions."""
        read = requirement.get("ReadRequirement", "Mandatory")
        for condition in requirement.get("ConditionalRequirements", []):
            if self.condition_holds(condition, uri, body):
                read = condition.get("ReadRequirement", read)
        return read

    def condition_holds(self, condition, uri, body):
        if "SubordinateToResource" in condition:
            return all(PARENT_SEGMENTS.get(parent, "") in uri
                       for parent in condition["SubordinateToResource"])
        value = body.get(condition["CompareProperty"])
        kind = condition["CompareType"]
        if kind == "Present":
            return value is not None
        if kind == "Absent":
            return value is None
        return value in condition.get("CompareValues", [])

    def check_properties(self, requirements, uri, body, where, compare_values=True):
        for name, requirement in requirements.items():
            read = self.requirement_of(requirement, uri, body)
            if name not in body:
                self.miss(read, where, name + " is missing")
                continue
            value = body[name]
            if compare_values:
                self.check_values(requirement, read, value if isinstance(value, list) else [value],
                                  where + "/" + name)
            if "MinCount" in requirement and len(value) < requirement["MinCount"]:
                self.miss(read, where, "%s has fewer than %d members" % (name, requirement["MinCount"]))
            items = [item for item in (value if isinstance(value, list) else [value])
                     if isinstance(item, dict)]
            children = requirement.get("PropertyRequirements", {})
            for child, child_requirement in children.items():
                # Values are compared across every member of an array.
                found = [item[child] for item in items if child in item]
                self.check_values(child_requirement, child_requirement.get("ReadRequirement", "Mandatory"),
                                  found, "%s/%s/%s" % (where, name, child))
            for index, item in enumerate(items):
                self.check_properties(children, uri, item, "%s/%s[%d]" % (where, name, index),
                                      compare_values=False)

    def check_values(self, requirement, read, values, where):
        wanted, comparison = requirement.get("Values"), requirement.get("Comparison", "AnyOf")
        if wanted is None or not values:
            return
        found = set(values)
        if comparison == "AnyOf" and not found & set(wanted):
            self.miss(read, where, "none of %s" % wanted)
        if comparison == "AllOf" and not set(wanted) <= found:
            self.miss(read, where, "not all of %s" % wanted)

    def check_actions(self, requirements, name, body, where):
        for action, requirement in requirements.items():
            read = requirement.get("ReadRequirement", "Mandatory")
            entry = body.get("Actions", {}).get("#%s.%s" % (name, action))
            if entry is None:
                self.miss(read, where, "action %s is missing" % action)
                continue
            allowed = self.allowable_values(entry)
            for parameter, wanted in requirement.get("Parameters", {}).items():
                missing = set(wanted.get("ParameterValues", [])) - set(allowed.get(parameter, []))
                if missing:
                    self.miss(wanted.get("ReadRequirement", "Mandatory"), where,
                              "%s %s lacks %s" % (action, parameter, sorted(missing)))

    def allowable_values(self, entry):
        allowed = {name.split("@", 1)[0]: values for name, values in entry.items()
                   if name.endswith("@Redfish.AllowableValues")}
        info = self.crawled.get(entry.get("@Redfish.ActionInfo"), (None, None, None))[2] or {}
        for parameter in info.get("Parameters", []):
            allowed.setdefault(parameter["Name"], parameter.get("AllowableValues", []))
        return allowed

    def check_resource(self, name, requirement, instances):
        read = requirement.get("ReadRequirement", "Mandatory")
        if not instances:
            self.miss(read, name, "no resource of this type is served")
        for uri, body in instances:
            self.check_properties(requirement.get("PropertyRequirements", {}), uri, body, uri)
            self.check_actions(requirement.get("ActionRequirements", {}), name, body, uri)
            for use_case in requirement.get("UseCases", []):
                key = use_case.get("UseCaseKeyProperty")
                if key is None or body.get(key) in use_case.get("UseCaseKeyValues", []):
                    self.check_properties(use_case.get("PropertyRequirements", {}), uri, body, uri)


@pytest.fixture(scope="module")
def unmet(bmc):
    crawled = crawl(bmc)
    by_type = {}
    for uri, body in bodies(crawled):
        by_type.setdefault(resource_type(body), []).append((uri, body))
    checker = Checker(crawled)
    for profile in load_profiles():
        for name, requirement in profile["Resources"].items():
            checker.check_resource(name, requirement, by_type.get(name, []))
    return checker.unmet


def test_the_profiles_are_read_whole():
    names = [profile["ProfileName"] for profile in load_profiles()]
    assert names == ["OCPBaselineHardwareManagement", "OCPServerHardwareManagement"]


def test_every_mandatory_requirement_is_met_but_the_known_ones(unmet):
    assert unmet["Mandatory"] == MANDATORY_NOT_MET, "\n".join(sorted(unmet["Mandatory"]))


def test_recommended_requirements_not_met_are_the_known_ones(unmet):
    assert unmet["Recommended"] == RECOMMENDED_NOT_MET, "\n".join(sorted(unmet["Recommended"]))
