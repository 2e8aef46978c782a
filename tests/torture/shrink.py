"""The shortest sequence of events that still fails."""


def shrink(events, fails, most_tries=80):
    """Of a failing list, a part that `fails` and of which nothing can be left out; as far as the tries go."""
    tries = 0

    def still_fails(part):
        nonlocal tries
        tries += 1
        return tries <= most_tries and fails(part)

    # What has just been done is mostly to blame.
    for last in (1, 4, 16, 64):
        if last < len(events) and still_fails(events[-last:]):
            events = events[-last:]
            break
    size = (len(events) + 1) // 2
    while events and size and tries < most_tries:
        at, removed = 0, False
        while at < len(events) and tries < most_tries:
            part = events[:at] + events[at + size:]
            if still_fails(part):
                events, removed = part, True
            else:
                at += size
        if not removed or size > len(events):
            size //= 2
    return events
