"""A monkey at the keyboard and the mouse: opens windows of the gallery and does at random what hands can do.

Found is: a crash, an assertion, a complaint of the toolkit, a process that shows no window and does not end, one that
cannot be closed. The same seed gives the same events; a failure prints the launch that repeats it alone.

usage: monkey.py GALLERY [--seed N] [--launches N] [--events N] [--only LAUNCH] [--objects A,B,...]
"""
import argparse
import os
import random
import re
import subprocess
import sys
import tempfile
import time

OBJECTS = ["dlg.example", "pref.example", "dlg.open_source", "dlg.preferences", "dlg.error_warning_dialog", "dlg.ask",
           "dlg.clipboard", "caption_panel_t", "advanced_panel_t", "pref.result_saving", "pref.editor",
           "panel.search_dir", "panel.experimental", "dlg.optin", "inplace_ctrl_t"]
KEYS = ["Tab", "shift+Tab", "Return", "Escape", "space", "Up", "Down", "Left", "Right", "Home", "End", "Page_Down",
        "Delete", "BackSpace", "F1", "alt+F4", "ctrl+a", "ctrl+c", "ctrl+v", "ctrl+z", "shift+F10", "alt+h", "alt+o",
        "alt+n", "a", "slash", "x", "1"]
# What the toolkit prints about a machine, not about a window; and of its chooser of emoji (Ctrl+.), which complains
# when its window closes before it was filled.
HARMLESS = re.compile(r"dconf|accessibility bus|AT-SPI|portal|Unable to init|GVFS|org\.freedesktop\.Notifications|"
                      r"g_variant_unref: assertion 'value != NULL'")
COMPLAINT = re.compile(r"CRITICAL|WARNING|assert|Assertion|ERROR.*toolkit", re.IGNORECASE)


def xdotool(*words):
    return subprocess.run(["xdotool", *map(str, words)], capture_output=True, text=True).stdout


def windows_of(pid):
    return xdotool("search", "--onlyvisible", "--all", "--pid", pid, "").split()


def batch(rng, pid):
    """Some events as one command, aimed at the windows that are there now."""
    windows = windows_of(pid)
    if not windows:
        return []
    words = []
    for _ in range(rng.randint(1, 6)):
        kind = rng.random()
        if kind < 0.6:
            words += ["key", "--clearmodifiers", rng.choice(KEYS)]
        elif kind < 0.9:
            window = rng.choice(windows)
            words += ["mousemove", "--window", window, rng.randint(2, 500), rng.randint(2, 360), "click",
                      rng.choice([1, 1, 1, 1, 2, 3, 4, 5])]
        elif kind < 0.95:
            words += ["windowsize", rng.choice(windows), rng.randint(60, 1200), rng.randint(40, 900)]
        else:
            words += ["key", rng.choice(["alt+F4", "Escape"])] * 3
    return words


def wait(condition, seconds):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if condition():
            return True
        time.sleep(0.02)
    return False


def run(gallery, seed, launch, events, objects):
    """What went wrong in one launch; nothing when all went well."""
    rng = random.Random(f"{seed}/{launch}")
    target = rng.choice(objects)
    with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryFile("w+") as errors:
        process = subprocess.Popen([gallery, "--show", target, "--config-dir", folder], stdout=subprocess.DEVNULL,
                                   stderr=errors)
        ended = lambda: process.poll() is not None
        visible = lambda: ended() or windows_of(process.pid)
        trouble = ""
        if not wait(visible, 20):
            trouble = "no window appeared"
        done = 0
        while not trouble and done < events and not ended():
            words = batch(rng, process.pid)
            if words:
                xdotool(*words)
            elif not wait(visible, 3):
                trouble = "it runs and shows no window"
            done += 1
        attempts = 0
        while not trouble and not ended():
            # A click beside the window may have given the focus to nobody.
            for window in windows_of(process.pid)[-1:]:
                xdotool("windowraise", window, "windowfocus", window)
            xdotool("key", "--clearmodifiers", "Escape", "key", "alt+F4")
            attempts += 1
            if attempts > 60:
                if os.environ.get("MONKEY_PICTURE"):
                    subprocess.run(["import", "-window", "root", os.environ["MONKEY_PICTURE"]])
                trouble = "it cannot be closed" if windows_of(process.pid) else "it runs and shows no window"
            wait(ended, 0.1)
        if trouble:
            process.kill()
        code = process.wait()
        errors.seek(0)
        said = [line for line in errors.read().splitlines() if COMPLAINT.search(line) and not HARMLESS.search(line)]
        if not trouble and code < 0:
            trouble = f"ended by signal {-code}"
        if not trouble and said:
            trouble = "complaints"
        return trouble and "\n    ".join([f"launch {launch} ({target}), seed {seed}: {trouble}", *said[:8]])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("gallery")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--launches", type=int, default=12)
    parser.add_argument("--events", type=int, default=40)
    parser.add_argument("--only", type=int)
    parser.add_argument("--objects", default=",".join(OBJECTS))
    options = parser.parse_args()
    # What a wild click starts must not be somebody's browser or editor.
    os.environ["PATH"] = "/usr/bin:/bin"
    xdotool("set_num_desktops", 1)  # a wheel turned beside the windows would go to another
    launches = [options.only] if options.only is not None else range(options.launches)
    failed = 0
    for launch in launches:
        trouble = run(options.gallery, options.seed, launch, options.events, options.objects.split(","))
        if trouble:
            failed += 1
            print(trouble, flush=True)
    print(f"{len(launches)} launches, {failed} with trouble")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
