"""Settings of the site; scripts/site.py copies this beside the pages that it has put together."""

import logging
import os
import re

project = "Platen"
author = "the authors of Platen"
version = release = os.environ["PLATEN_VERSION"]
language = "en"

extensions = ["myst_parser", "breathe", "sphinx.ext.autodoc"]
source_suffix = {".md": "markdown"}
exclude_patterns = []
# Whatever is doubtful is an error: references that lead nowhere, pages that nothing leads to.
nitpicky = False

myst_heading_anchors = 4
myst_enable_extensions = ["deflist"]
# Blocks without a word are plain text, not guessed at.
highlight_language = "text"

breathe_projects = {"platen": os.environ["PLATEN_XML"]}
breathe_default_project = "platen"
breathe_show_include = False
breathe_domain_by_extension = {"h": "cpp"}

autodoc_typehints = "signature"
autodoc_member_order = "bysource"
autodoc_preserve_defaults = True
add_module_names = False

# Two hyphens begin options.
smartquotes = False

html_theme = "furo"
html_title = f"Platen {release}"
html_static_path = ["static"]
html_css_files = ["site.css"]
html_favicon = "static/platen.svg"
html_logo = "static/platen.svg"
html_copy_source = False
html_domain_indices = False
html_show_sourcelink = False
html_show_copyright = False
html_show_sphinx = False
# No dates: the same sources give the same pages.
html_last_updated_fmt = None
html_theme_options = {"navigation_with_keys": False}


def is_doubtful(record):
    """A namespace is declared by every header that adds to it, which is no fault."""
    return not re.search(r"Duplicate C\+\+ declaration.*cpp:type:: \w+'", record.getMessage(), re.S)


logging.getLogger("sphinx.sphinx.domains.cpp").addFilter(is_doubtful)
