"""Loads programs of this folder as modules."""

import importlib.machinery
import importlib.util
from pathlib import Path


def load(name):
    """Returns the program of that name, which has no suffix, as a module."""
    loader = importlib.machinery.SourceFileLoader(name, str(Path(__file__).with_name(name)))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    loader.exec_module(module)
    return module
