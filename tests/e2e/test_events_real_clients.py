"""OpenStack's sushy subscribes, submits a test event and loads the registries."""

import sushy
from sushy.resources.registry.message_registry_file import MessageRegistryFile

from event_receivers import HttpListener


def test_sushy_subscribes_and_its_test_event_arrives(bmc):
    listener = HttpListener()
    client = sushy.Sushy(bmc.url("/redfish/v1"), username=bmc.admin_user,
                         password=bmc.admin_password)
    try:
        service = client.get_event_service()
        assert service.delivery_retry_attempts == 3
        subscriptions = service.subscriptions
        created = subscriptions.create({"Destination": listener.url, "Protocol": "Redfish",
                                        "Context": "sushy", "EventTypes": ["Alert"]})
        assert created.context == "sushy" and created.protocol == "Redfish"
        subscriptions.refresh()
        assert [member.destination for member in subscriptions.get_members()] == [listener.url]

        service.submit_test_event("sushy-1", "2026-01-01T00:00:00+00:00", "Alert", "From sushy",
                                  [], "TWR.v1.0.TestAlert", "/redfish/v1/Systems/1", "Warning")
        [event] = listener.wait_for(lambda event: event["EventId"] == "sushy-1")
        assert event["OriginOfCondition"] == {"@odata.id": "/redfish/v1/Systems/1"}
        created.delete()
    finally:
        listener.stop()


def registry_via_sushy(bmc, registry_file_id):
    # Debian's sushy lacks its packaged standard registries, so the
    # service's registry files are read one by one as Sushy.registries would.
    connector = sushy.connector.Connector(bmc.base)
    connector.set_http_basic_auth(bmc.admin_user, bmc.admin_password)
    registry_file = MessageRegistryFile(connector, "/redfish/v1/Registries/" + registry_file_id)
    return registry_file.get_message_registry("en", sushy.connector.Connector(bmc.base))


def test_sushy_loads_the_event_and_oem_registries(bmc):
    event = registry_via_sushy(bmc, "Event.v1_0_0")
    assert event.registry_prefix == "Event" and event.registry_version == "1.0.0"
    assert event.messages["SensorThresholdCritical"].number_of_args == 2
    assert "HostPowerOff" in event.messages
    assert "OemSmtpModified" in registry_via_sushy(bmc, "TWR.v1_0_0").messages
