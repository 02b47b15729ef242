import pytest
from requests.adapters import HTTPAdapter

from bmc_instance import BmcInstance


@pytest.fixture(autouse=True, scope="session")
def no_answer_repeats_a_header():
    """Every answer any test reads through requests (the real clients'
    transport too) names each header at most once."""
    original = HTTPAdapter.build_response

    def checked(adapter, request, response):
        repeated = sorted(name for name in response.headers
                          if len(response.headers.getlist(name)) > 1)
        assert not repeated, f"{request.method} {request.url} repeats {repeated}"
        return original(adapter, request, response)

    HTTPAdapter.build_response = checked
    yield
    HTTPAdapter.build_response = original


@pytest.fixture(scope="module")
def bmc():
    """A BMC as make run serves it: the service root is open to read."""
    instance = BmcInstance(open_service_root=True)
    yield instance
    instance.stop()


@pytest.fixture(scope="module")
def closed_bmc():
    """A BMC with the default settings: every request authenticates."""
    instance = BmcInstance()
    yield instance
    instance.stop()


@pytest.fixture
def admin(bmc):
    """A requests session with the administrator's Basic credentials."""
    return bmc.admin()


@pytest.fixture
def single_process_bmc():
    instance = BmcInstance(processes=1, open_service_root=True)
    yield instance
    instance.stop()
