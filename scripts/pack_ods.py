#!/usr/bin/env python3
"""Packs the spreadsheet report of the kernel, the "content.xml" that `calculate` leaves, into an
OpenDocument spreadsheet file that office programs open.

Usage: scripts/pack_ods.py [content.xml] report.ods

The container is a zip whose first entry is "mimetype", stored uncompressed so that a reader finds the
media type at a fixed place in the file, then the manifest and the document itself.
"""
import sys
import xml.etree.ElementTree as ElementTree
import zipfile

MEDIA_TYPE = "application/vnd.oasis.opendocument.spreadsheet"

MANIFEST = f"""<?xml version="1.0" encoding="UTF-8"?>
<manifest:manifest xmlns:manifest="urn:oasis:names:tc:opendocument:xmlns:manifest:1.0">
 <manifest:file-entry manifest:media-type="{MEDIA_TYPE}" manifest:full-path="/"/>
 <manifest:file-entry manifest:media-type="text/xml" manifest:full-path="content.xml"/>
</manifest:manifest>
"""


def main(arguments):
    if len(arguments) not in (1, 2):
        sys.exit(__doc__.strip())
    content = arguments[0] if len(arguments) == 2 else "content.xml"
    target = arguments[-1]
    try:
        with open(content, "rb") as f:
            document = f.read()
    except OSError as e:
        sys.exit(f"cannot read {content}: {e.strerror}")
    try:
        # A broken document is caught here, with the parser's line and column, rather than in the office program.
        ElementTree.fromstring(document)
    except ElementTree.ParseError as e:
        sys.exit(f"{content} is not well-formed XML: {e}")
    try:
        with zipfile.ZipFile(target, "w") as ods:
            ods.writestr(zipfile.ZipInfo("mimetype"), MEDIA_TYPE, compress_type=zipfile.ZIP_STORED)
            ods.writestr("META-INF/manifest.xml", MANIFEST, compress_type=zipfile.ZIP_DEFLATED)
            ods.writestr("content.xml", document, compress_type=zipfile.ZIP_DEFLATED)
    except OSError as e:
        sys.exit(f"cannot write {target}: {e.strerror}")


if __name__ == "__main__":
    main(sys.argv[1:])
