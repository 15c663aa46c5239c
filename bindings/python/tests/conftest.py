from pathlib import Path

import pytest
from hypothesis import HealthCheck, settings

# Each change writes and reads a table: few examples, and none is too slow on a busy machine.
settings.register_profile(
    "few",
    max_examples=25,
    deadline=None,
    derandomize=True,
    suppress_health_check=[HealthCheck.too_slow, HealthCheck.function_scoped_fixture],
)
settings.load_profile("few")


@pytest.fixture(autouse=True)
def folder(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> Path:
    monkeypatch.chdir(tmp_path)
    return tmp_path
