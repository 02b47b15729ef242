"""DMTF's redfishtool and OpenStack's sushy read the chassis, its power and
its thermal resources."""

import json
import subprocess

import sushy
import sushy.auth
from sushy.resources.chassis.thermal.constants import FanReadingUnit


def redfishtool(bmc, *arguments):
    return subprocess.run(["redfishtool", "-r", f"127.0.0.1:{bmc.port}", "-S", "Never",
                           "-u", bmc.admin_user, "-p", bmc.admin_password, "Chassis", *arguments],
                          capture_output=True, text=True, timeout=120, check=True).stdout


def test_redfishtool_lists_the_chassis_and_reads_power_and_thermal(bmc):
    listing = redfishtool(bmc, "list")
    assert "/redfish/v1/Chassis/1" in listing
    power = json.loads(redfishtool(bmc, "-1", "Power"))
    assert power["@odata.id"] == "/redfish/v1/Chassis/1/Power"
    assert len(power["PowerSupplies"]) == 2
    thermal = json.loads(redfishtool(bmc, "-1", "Thermal"))
    assert {fan["Name"] for fan in thermal["Fans"]} == {"FAN1", "FAN2", "FAN3", "FAN4"}


def test_sushy_reads_the_chassis_with_its_power_and_thermal(bmc):
    client = sushy.Sushy(bmc.url("/redfish/v1"), verify=False,
                         auth=sushy.auth.BasicAuth(bmc.admin_user, bmc.admin_password))
    chassis = client.get_chassis("/redfish/v1/Chassis/1")
    assert chassis.chassis_type == sushy.CHASSIS_TYPE_RACK_MOUNT
    assert chassis.power_state == sushy.POWER_STATE_ON
    assert chassis.indicator_led == sushy.INDICATOR_LED_OFF
    assert chassis.physical_security.intrusion_sensor == sushy.IntrusionSensor.NORMAL
    supplies = chassis.power.power_supplies
    assert [supply.name for supply in supplies] == ["Power Supply Bay 1", "Power Supply Bay 2"]
    assert supplies[0].status.health == sushy.HEALTH_OK
    thermal = chassis.thermal
    assert {fan.reading_units for fan in thermal.fans} == {FanReadingUnit.RPM}
    cpu = next(temperature for temperature in thermal.temperatures if temperature.name == "CPU1 Temp")
    assert cpu.physical_context == "CPU"
    assert cpu.reading_celsius == 45
