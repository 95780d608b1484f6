"""Reading the host's dumps (host/WORLD.md) in the end-to-end tests."""


def objects_by_id(dump):
    """Every object of the dump's tree by its id."""
    found = {}
    stack = [dump["objects"]]
    while stack:
        o = stack.pop()
        found[o["id"]] = o
        stack.extend(o.get("children", []))
    return found


def value(v):
    """The plain value of a dumped typed value ({"uint": 5} gives 5)."""
    return list(v.values())[0]


def prop_value(o, name):
    """The plain value of the object's property `name`; None when it has none."""
    p = o.get("props", {}).get(name)
    return value(p) if p else None
