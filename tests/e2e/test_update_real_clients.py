"""OpenStack's sushy updates the BMC firmware and follows the task to its end."""

import os
import time

import sushy

from update_servers import HttpImageServer


def test_sushy_simple_update_runs_to_completion(bmc):
    directory = os.path.join(bmc.root, "sushy-images")
    os.makedirs(directory)
    bmc.bmcsim("firmware", "image", "BMC", "7.00.00", os.path.join(directory, "bmc.img"))
    server = HttpImageServer(directory)
    try:
        client = sushy.Sushy(bmc.url("/redfish/v1"), username=bmc.admin_user,
                             password=bmc.admin_password)
        update_service = client.get_update_service()
        monitor = update_service.simple_update("http://%s/bmc.img" % server.host,
                                               targets=["/redfish/v1/Managers/1"])
        for _ in range(100):
            if not monitor.check_is_processing:
                break
            time.sleep(0.2)
    finally:
        server.stop()
    assert not monitor.is_processing
    assert monitor.response.status_code == 200
    assert monitor.response.json()["TaskState"] == "Completed"
    assert "BMC=7.00.00" in bmc.bmcsim("firmware", "show")
