"""Reading answers and simulator state the way every family's tests do."""

from schema_validation import validate_messages


def shown(bmc, *command):
    """The key=value lines of a bmcsim show command."""
    return dict(line.split("=", 1) for line in bmc.bmcsim(*command).splitlines() if "=" in line)


def error_entries(answer):
    body = answer.json()
    validate_messages(body)
    return body["error"]["@Message.ExtendedInfo"]


def message_of(answer):
    """(MessageId, MessageArgs, RelatedProperties) of an error's only message."""
    entries = error_entries(answer)
    assert len(entries) == 1, entries
    return entries[0]["MessageId"], entries[0].get("MessageArgs"), entries[0].get("RelatedProperties")


def assert_success(answer):
    assert answer.status_code == 200, answer.text
    body = answer.json()
    validate_messages(body)
    assert body == {"Success": {"code": "Base.v1_10_3.Success", "Message": "Successfully Completed Request."}}
