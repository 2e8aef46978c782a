#!/usr/bin/env python3
"""Packs files into a ZIP archive whose bytes depend on nothing but the files' names and contents.

usage: make_archive.py OUT FOLDER MEMBER...
"""
import os
import sys
import tempfile
import zipfile


def main(out, folder, members):
    handle, temporary = tempfile.mkstemp(dir=os.path.dirname(out) or ".")
    os.close(handle)
    try:
        with zipfile.ZipFile(temporary, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
            for member in sorted(members):
                info = zipfile.ZipInfo(member, date_time=(1980, 1, 1, 0, 0, 0))
                info.compress_type = zipfile.ZIP_DEFLATED
                info.external_attr = 0o644 << 16
                with open(os.path.join(folder, member), "rb") as source:
                    archive.writestr(info, source.read())
        os.chmod(temporary, 0o644)
        os.replace(temporary, out)
    except BaseException:
        os.unlink(temporary)
        raise


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2], sys.argv[3:])
