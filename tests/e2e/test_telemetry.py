"""The telemetry service's power-consumption reports, computed from the
simulator's one-minute samples."""

import subprocess

import pytest

SERVICE = "/redfish/v1/TelemetryService"
DEFINITIONS = SERVICE + "/MetricDefinitions"
REPORT_DEFINITIONS = SERVICE + "/MetricReportDefinitions"
REPORTS = SERVICE + "/MetricReports"
PERIODS = {"Hour": 60, "Day": 1440, "Week": 10080}
STATISTICS = {"Avg": lambda values: (2 * sum(values) + len(values)) // (2 * len(values)),
              "Min": min, "Max": max}
REPORT_IDS = [statistic + "PowerConsumption" + period for period in PERIODS for statistic in STATISTICS]


def get(session, bmc, path):
    answer = session.get(bmc.url(path), timeout=10)
    assert answer.status_code == 200, (path, answer.text)
    return answer.json()


def simulated_samples(bmc):
    """The samples as the simulator serves them: (last minute, {minute: watts})."""
    lines = bmc.bmcsim("telemetry", "show").splitlines()
    last_minute = int(lines[0].split("=")[1])
    return last_minute, {int(minute): int(watts) for minute, watts in (line.split() for line in lines[1:])}


def expected_values(bmc):
    """Each report's value from the simulator's samples; None for an empty period."""
    last_minute, samples = simulated_samples(bmc)
    expected = {}
    for report_id in REPORT_IDS:
        statistic, period = report_id[:3], report_id[len("AvgPowerConsumption"):]
        values = [watts for minute, watts in samples.items() if minute > last_minute - PERIODS[period]]
        expected[report_id] = STATISTICS[statistic](values) if values else None
    return expected


def served_values(session, bmc):
    served = {}
    for report_id in REPORT_IDS:
        report = get(session, bmc, REPORTS + "/" + report_id)
        assert report["MetricReportDefinition"] == {"@odata.id": REPORT_DEFINITIONS + "/" + report_id}
        values = report["MetricValues"]
        assert len(values) <= 1
        served[report_id] = int(values[0]["MetricValue"]) if values else None
        if values:
            assert values[0]["Timestamp"] == report["Timestamp"]
            get(session, bmc, values[0]["MetricDefinition"]["@odata.id"])
    return served


def test_the_service_links_every_metric(bmc, admin):
    service = get(admin, bmc, SERVICE)
    for name, prefix in (("MetricDefinitions", "PowerConsumed"), ("MetricReportDefinitions", "PowerConsumption"),
                         ("MetricReports", "PowerConsumption")):
        collection = get(admin, bmc, service[name]["@odata.id"])
        ids = [member["@odata.id"].rsplit("/", 1)[1] for member in collection["Members"]]
        assert ids == [report_id.replace("PowerConsumption", prefix) for report_id in REPORT_IDS]
    definition = get(admin, bmc, REPORT_DEFINITIONS + "/MinPowerConsumptionDay")
    assert definition["MetricReportDefinitionType"] == "OnRequest"
    assert (definition["Metrics"][0]["CollectionFunction"], definition["Metrics"][0]["CollectionDuration"]) == (
        "Minimum", "P1D")
    assert get(admin, bmc, DEFINITIONS + "/MaxPowerConsumedWeek")["CalculationTimeInterval"] == "P7D"


def test_a_powered_host_fills_its_history_with_its_draw(bmc, admin):
    """A fresh simulator's host has been on all week at its present draw."""
    draw = int(dict(line.split("=") for line in bmc.bmcsim("power", "show").splitlines())["consumed_watts"])
    assert served_values(admin, bmc) == {report_id: draw for report_id in REPORT_IDS}
    assert expected_values(bmc) == {report_id: draw for report_id in REPORT_IDS}


def test_reports_match_the_samples_the_simulator_holds(bmc, admin):
    bmc.bmcsim("power", "off")
    try:
        bmc.bmcsim("telemetry", "clear")
        assert served_values(admin, bmc) == {report_id: None for report_id in REPORT_IDS}
        bmc.bmcsim("telemetry", "add-samples", "3", "100", "200", "331")
        bmc.bmcsim("telemetry", "add-samples", "120", "50")
        bmc.bmcsim("telemetry", "add-samples", "2880", "900")
        served = served_values(admin, bmc)
        assert served == expected_values(bmc)
        assert [served[statistic + "PowerConsumptionHour"] for statistic in STATISTICS] == [210, 100, 331]
        assert [served[statistic + "PowerConsumptionDay"] for statistic in STATISTICS] == [170, 50, 331]
        assert [served[statistic + "PowerConsumptionWeek"] for statistic in STATISTICS] == [316, 50, 900]
    finally:
        bmc.bmcsim("power", "on")


def test_bad_samples_are_refused_and_change_nothing(bmc):
    bmc.bmcsim("power", "off")
    try:
        before = bmc.bmcsim("telemetry", "show").splitlines()[1:]
        for arguments in (("0", "5"), ("1", "5", "6"), ("10081", "5"), ("3", "65536"), ("3", "-1"),
                          ("x", "5")):
            with pytest.raises(subprocess.CalledProcessError):
                bmc.bmcsim("telemetry", "add-samples", *arguments)
        assert bmc.bmcsim("telemetry", "show").splitlines()[1:] == before
    finally:
        bmc.bmcsim("power", "on")


@pytest.mark.parametrize("path", [REPORTS + "/AvgPowerConsumptionYear", REPORTS + "/AvgPowerConsumedHour",
                                  DEFINITIONS + "/AvgPowerConsumptionHour", REPORT_DEFINITIONS + "/X"])
def test_unknown_metrics_are_not_found(bmc, admin, path):
    answer = admin.get(bmc.url(path), timeout=10)
    assert answer.status_code == 404, answer.text


def test_reports_are_read_only(bmc, admin):
    for path in (SERVICE, REPORTS + "/AvgPowerConsumptionHour", REPORT_DEFINITIONS + "/AvgPowerConsumptionHour"):
        answer = admin.patch(bmc.url(path), json={"Name": "x"}, timeout=10)
        assert answer.status_code == 405, answer.text
        assert answer.headers["Allow"] == "GET"
