"""steady.py: differences of two readings that are not of the moment (random numbers, the time of day)."""


def changes(before, after, read_again, times=8):
    """The pairs of lines that differ, without those whose first line becomes another one when it is read again.

    A small random number stays as it was by chance once in a while, so one more reading is not enough.
    """
    changed = [(at, a, b) for at, (a, b) in enumerate(zip(before, after)) if a != b]
    for _ in range(times):
        if not changed:
            break
        again = read_again()
        changed = [(at, a, b) for at, a, b in changed if at < len(again) and again[at] == a]
    return [(a, b) for _, a, b in changed]
