# SPDX-License-Identifier: Apache-2.0
"""What the package raises. Each error names the node or the file, and what would be right."""


class Error(Exception):
    """The base of all."""


class CaseError(Error):
    """A case, a selection or a model file can't be read or written.

    problems: a text for each, with the file and the place in it.
    """

    def __init__(self, problems):
        self.problems = [problems] if isinstance(problems, str) else list(problems)
        super().__init__("\n".join(self.problems))

    def __reduce__(self):
        return type(self), (self.problems,)


class PathError(Error, ValueError):
    """A path expression that does not parse.

    path: the expression.
    """

    def __init__(self, path, text):
        self.path, self.text = path, text
        super().__init__(text)

    def __reduce__(self):
        return type(self), (self.path, self.text)


class NoSuchNode(Error, LookupError):
    """A path that leads nowhere.

    path: as it was asked for.
    found: the part of it that leads somewhere, or "".
    near: names that are there in place of the next step, the nearest first.
    """

    def __init__(self, path, found="", near=()):
        self.path, self.found, self.near = path, found, list(near)
        text = f"no such node: {path}"
        text += f"\n  found: {found}" if found else "\n  nothing of it was found"
        if self.near:
            text += "\n  near: " + ", ".join(self.near)
        super().__init__(text)

    def __reduce__(self):
        return type(self), (self.path, self.found, self.near)


class NoSuchMember(Error, AttributeError):
    """A member that the class of a neutral object does not have.

    member: as it was asked for.
    near: names of members, the nearest first.
    """

    def __init__(self, text, member, near=()):
        self.text, self.member, self.near = text, member, list(near)
        super().__init__(text)

    def __reduce__(self):
        return type(self), (self.text, self.member, self.near)


class Refused(Error):
    """A read or a store that a node does not take.

    path: of the node.
    text: why, as the library puts it.
    """

    def __init__(self, path, text):
        self.path, self.text = path, text
        super().__init__(f"{path}: {text}" if path else text)

    def __reduce__(self):
        return type(self), (self.path, self.text)


class StoreRefused(Refused):
    """A value that a node does not take; it is as it was."""


class NotSolved(UserWarning):
    """A value was stored, and the solve that the store began is not complete."""


class LeftOut(UserWarning):
    """Unit operations that have no class in the neutral view, and so no row in a table."""


class Normalised(UserWarning):
    """Fractions that were stored together did not sum to 1."""


class UnitError(Refused, ValueError):
    """A unit in which a node can't be told, with the units in which it can."""


class NodeGone(Refused):
    """A node whose object the case has no more, or whose case was closed."""


class SolveFailed(Error):
    """A solve that is not complete.

    path: the object that failed, or "" when the host names none.
    text: the cause, as the solver puts it.
    """

    def __init__(self, path, text):
        self.path, self.text = path, text
        super().__init__(f"{path}: {text}" if path else text)

    def __reduce__(self):
        return type(self), (self.path, self.text)


class WrongThread(Error, RuntimeError):
    """A call from another thread than the one that opened the case."""
