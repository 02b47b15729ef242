import pytest

from bmc_instance import BmcInstance


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
