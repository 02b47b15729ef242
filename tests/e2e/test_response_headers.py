"""The headers of each kind of response, as clients and validators read them."""
import requests

JSON = "application/json; charset=UTF-8"


def test_get_carries_odata_version_allow_link_and_cache_control(bmc):
    admin = bmc.admin()
    chassis = admin.get(bmc.url("/redfish/v1/Chassis/1"))
    assert chassis.status_code == 200
    assert chassis.headers["OData-Version"] == "4.0"
    assert chassis.headers["Content-Type"] == JSON
    assert chassis.headers["Allow"] == "GET, PATCH"
    assert chassis.headers["Link"] == "</redfish/v1/JsonSchemas/Chassis>; rel=describedby"
    assert chassis.headers["Cache-Control"] == "no-cache"
    assert int(chassis.headers["Content-Length"]) == len(chassis.content)
    # The schema a Link names is served.
    assert admin.get(bmc.url("/redfish/v1/JsonSchemas/Chassis")).status_code == 200
    accounts = admin.get(bmc.url("/redfish/v1/AccountService/Accounts"))
    assert accounts.headers["Allow"] == "GET, POST"


def test_204_has_neither_body_nor_content_type(bmc):
    admin = bmc.admin()
    answer = admin.patch(bmc.url("/redfish/v1/SessionService"), json={"SessionTimeout": 900})
    assert answer.status_code == 204
    assert answer.content == b""
    assert "Content-Type" not in answer.headers
    assert answer.headers["OData-Version"] == "4.0"


def test_405_names_the_allowed_methods(bmc):
    answer = bmc.admin().delete(bmc.url("/redfish/v1/Chassis/1"))
    assert answer.status_code == 405
    assert answer.headers["Allow"] == "GET, PATCH"
    assert answer.content == b""


def test_errors_are_json_with_odata_version(bmc):
    answer = bmc.admin().patch(bmc.url("/redfish/v1/SessionService"), json={"SessionTimeout": "x"})
    assert answer.status_code == 400
    assert answer.headers["OData-Version"] == "4.0"
    assert answer.headers["Content-Type"] == JSON
    assert answer.json()["error"]["code"] == "Base.v1_10_3.GeneralError"


def test_login_answers_one_response(bmc):
    answer = requests.post(bmc.url("/redfish/v1/SessionService/Sessions"),
                           json={"UserName": "admin", "Password": bmc.admin().auth[1]}, timeout=10)
    assert answer.status_code == 201
    assert int(answer.headers["Content-Length"]) == len(answer.content)
    assert answer.json()["UserName"] == "admin"
    session = bmc.admin().delete(bmc.url(answer.headers["Location"]))
    assert session.status_code == 204


def test_encoded_query_options_and_members_uri(bmc):
    admin = bmc.admin()
    for query in ("$top=1", "%24top=1"):
        refused = admin.get(bmc.url("/redfish/v1/Chassis?" + query))
        assert refused.status_code == 400, query
        assert refused.json()["error"]["@Message.ExtendedInfo"][0]["MessageId"] == \
            "Base.1.10.QueryNotSupported"
    created = requests.post(bmc.url("/redfish/v1/SessionService/Sessions/Members"),
                            json={"UserName": "admin", "Password": admin.auth[1]}, timeout=10)
    assert created.status_code == 201
    assert admin.delete(bmc.url(created.headers["Location"])).status_code == 204


def test_every_resource_links_its_schema_local_or_dmtf(bmc):
    admin = bmc.admin()
    protocol = admin.get(bmc.url("/redfish/v1/Managers/1/NetworkProtocol"))
    version = protocol.json()["@odata.type"].split(".")[1]
    assert protocol.headers["Link"] == (
        "<http://redfish.dmtf.org/schemas/v1/ManagerNetworkProtocol.%s.json>; rel=describedby"
        % version)
    root = admin.get(bmc.url("/redfish/v1/"))
    assert root.headers["Link"] == "</redfish/v1/JsonSchemas/ServiceRoot>; rel=describedby"
    features = root.json()["ProtocolFeaturesSupported"]
    assert features["FilterQuery"] is False and features["ExpandQuery"]["ExpandAll"] is False


def test_patch_ignores_odata_annotations_and_refuses_a_body_of_nothing_else(bmc):
    admin = bmc.admin()
    service = admin.get(bmc.url("/redfish/v1/SessionService")).json()
    echoed = {"@odata.id": service["@odata.id"], "@odata.type": service["@odata.type"],
              "SessionTimeout": service["SessionTimeout"]}
    assert admin.patch(bmc.url("/redfish/v1/SessionService"), json=echoed).status_code == 204
    only = admin.patch(bmc.url("/redfish/v1/SessionService"),
                       json={"@odata.etag": "\"x\"", "@odata.type": service["@odata.type"]})
    assert only.status_code == 400
    assert [entry["MessageId"] for entry in only.json()["error"]["@Message.ExtendedInfo"]] == [
        "Base.1.10.NoOperation"]
