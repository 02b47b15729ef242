import pytest

from bmc_instance import BmcInstance


@pytest.fixture(scope="module")
def bmc():
    instance = BmcInstance()
    yield instance
    instance.stop()


@pytest.fixture
def single_process_bmc():
    instance = BmcInstance(processes=1)
    yield instance
    instance.stop()
