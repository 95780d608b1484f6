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
