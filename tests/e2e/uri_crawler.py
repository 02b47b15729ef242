"""Crawls the URI space that a BMC publishes from /redfish/v1, with the
administrator's credentials, after giving every collection that starts
empty a member."""

import time
from collections import deque

ROOT = "/redfish/v1"
METADATA = ROOT + "/$metadata"
MAX_URIS = 3000


def named_values(value):
    """Every (name, value) of every object in a document, depth first."""
    if isinstance(value, dict):
        for name, item in value.items():
            yield name, item
            yield from named_values(item)
    elif isinstance(value, list):
        for item in value:
            yield from named_values(item)


def published_links(body):
    """Every "@odata.id" and "@Redfish.ActionInfo" in a body, and every file
    "Uri" of a registry or schema file resource."""
    for name, item in named_values(body):
        if name in ("@odata.id", "@Redfish.ActionInfo") and isinstance(item, str):
            yield item.split("#", 1)[0]
        elif name == "Uri" and isinstance(item, str) and item.startswith("/"):
            yield item


def finished(bmc, session, action):
    """Runs an action that answers with a task monitor, to its end."""
    answer = session.post(bmc.url(action), json={}, timeout=10)
    assert answer.status_code == 202, answer.text
    for _ in range(100):
        if session.get(bmc.url(answer.headers["Location"]), timeout=10).status_code != 202:
            return
        time.sleep(0.1)
    raise AssertionError("the task of %s did not end" % action)


def populate(bmc, session):
    """Gives every collection that starts empty a member to crawl, and the
    dumps a file to describe."""
    bmc.bmcsim("eventlog", "add", "146", "crawler was here")
    for family in ("broadcom", "marvell"):
        bmc.bmcsim("storage", "set", family, "1")
    bmc.bmcsim("storage", "raid", "foreign", "HA-RAID.0", "RAID1", "0,1")
    assert bmc.login().status_code == 201
    subscription = {"Destination": "http://127.0.0.1:9/events", "Protocol": "Redfish"}
    answer = session.post(bmc.url(ROOT + "/EventService/Subscriptions"), json=subscription, timeout=10)
    assert answer.status_code == 201, answer.text
    bmc.bmcsim("crashdump", "enable")
    finished(bmc, session, ROOT + "/Systems/1/LogServices/Crashdump/Actions/Oem/Crashdump.OnDemand")
    finished(bmc, session, ROOT + "/Oem/Tarnwright/DumpService/Dumps/BMCEvidenceDump/Actions/"
                           "TwrBMCEvidenceDump.Generate")


def crawl(bmc):
    """uri -> (status, content type, JSON body or None), breadth first."""
    session = bmc.admin()
    populate(bmc, session)
    seen, queue, answers = {ROOT, METADATA}, deque([ROOT, METADATA]), {}
    while queue:
        assert len(answers) < MAX_URIS, "more URIs than a BMC publishes: a link loop?"
        uri = queue.popleft()
        answer = session.get(bmc.url(uri), timeout=10)
        kind = answer.headers.get("Content-Type", "")
        body = answer.json() if "json" in kind and answer.content else None
        answers[uri] = (answer.status_code, kind, body)
        for link in published_links(body):
            if link not in seen:
                seen.add(link)
                queue.append(link)
    return answers


def bodies(crawled):
    """(uri, body) of every Redfish document the crawl read."""
    for uri, (status, _, body) in crawled.items():
        if status == 200 and isinstance(body, dict) and "@odata.type" in body:
            yield uri, body
