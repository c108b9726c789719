# SPDX-License-Identifier: Apache-2.0
"""Pictures that other libraries draw, made fit to stand within a page: no outside references."""

from __future__ import annotations

import re
import xml.etree.ElementTree as ElementTree
from typing import Callable, Optional

_SVG, _XLINK = "http://www.w3.org/2000/svg", "http://www.w3.org/1999/xlink"

_LEAST_SCALE = 0.7

# What no XML and no page can hold.
_NO_TEXT = re.compile("[\x00-\x08\x0b\x0c\x0e-\x1f\x7f\ud800-\udfff\ufffe\uffff]")


def clean(text: str) -> str:
    """A text with U+FFFD for each character that a page can't hold."""
    return _NO_TEXT.sub("\ufffd", text)


def inline(picture: str, prefix: str, label: str, retitle: Optional[Callable[[str, str], str]] = None) -> str:
    """The `svg` element of a drawn picture, for a page that holds others too.

    prefix: stands before each id in it, and before what refers to one.
    label: what the picture is, for those who don't see it.
    retitle: the new text of a `title`, from the id of the element that holds it and the old text;
        without a text there is no title.
    """
    root = ElementTree.fromstring(picture)
    root.set("role", "img")
    root.set("aria-label", clean(label))
    for element in list(root.iter()):
        for child in list(element):
            if child.tag == f"{{{_SVG}}}metadata":
                element.remove(child)
            elif child.tag == f"{{{_SVG}}}title" and retitle:
                _retitle(element, child, retitle(element.get("id", ""), child.text or ""))
    for element in root.iter():
        _rename(element, prefix)
    root.set("xmlns", _SVG)
    root.set("style", f"min-width: {_least_width(root)}")
    return ElementTree.tostring(root, encoding="unicode")


def _least_width(root: ElementTree.Element) -> str:
    """How narrow a picture may become before its letters are too small."""
    width = root.get("width", "")
    number = width.rstrip("ptx")
    return f"{_LEAST_SCALE * float(number):.0f}{width[len(number):]}"


def _retitle(holder: ElementTree.Element, title: ElementTree.Element, text: str) -> None:
    if text:
        title.text = clean(text)
    else:
        holder.remove(title)


def _rename(element: ElementTree.Element, prefix: str) -> None:
    element.tag = element.tag.rpartition("}")[2]
    link = element.attrib.pop(f"{{{_XLINK}}}href", None)
    if link is not None and link.startswith("#"):
        element.set("href", f"#{prefix}{link[1:]}")
    for name, value in element.items():
        if name == "id":
            element.set(name, prefix + value)
        elif "url(#" in value:
            element.set(name, value.replace("url(#", f"url(#{prefix}"))
