# SPDX-License-Identifier: GPL-3.0-or-later
"""The item of the update feed that announces a package; used by scripts/release."""
import argparse
import base64
import email.utils
import os
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from xml.sax.saxutils import escape, quoteattr

NAMESPACE = "http://www.andymatuschak.org/xml-namespaces/sparkle"
EMPTY_FEED = f"""<?xml version="1.0" encoding="UTF-8"?>
<rss version="2.0" xmlns:sparkle="{NAMESPACE}">
  <channel>
    <title>Veltrix</title>
  </channel>
</rss>
"""


def refuse(message):
    print(f"scripts/release: {message}", file=sys.stderr)
    sys.exit(1)


def read_feed(path):
    """The text of the feed, which must be one; of an empty one where there is none."""
    if not os.path.exists(path):
        return EMPTY_FEED
    with open(path, encoding="utf-8") as file:
        text = file.read()
    try:
        root = ElementTree.fromstring(text.encode())
    except ElementTree.ParseError as error:
        refuse(f"the feed '{path}' cannot be read: {error}")
    if root.tag != "rss" or root.find("channel") is None:
        refuse(f"'{path}' is no feed")
    if f'xmlns:sparkle="{NAMESPACE}"' not in text or text.count("</channel>") != 1:
        refuse(f"the feed '{path}' is written in another way than this script can add to")
    return text


def is_newer(version, other):
    return subprocess.run(
        ["dpkg", "--compare-versions", version, "gt", other], check=False
    ).returncode == 0


def require_newer(text, version):
    """Every version of a feed counts, of whatever channel: what was announced once is not announced again."""
    for element in ElementTree.fromstring(text.encode()).iter(f"{{{NAMESPACE}}}version"):
        other = (element.text or "").strip()
        if other and not is_newer(version, other):
            refuse(f"{version} is not newer than {other}, which the feed has")


def notes(changes):
    """The points of a changelog entry as a list in HTML."""
    points = re.findall(r"^ +\* (.*(?:\n +[^ *.].*)*)", changes, re.MULTILINE)
    lines = "".join(f"<li>{escape(' '.join(point.split()))}</li>" for point in points)
    return f"<ul>{lines}</ul>".replace("]]>", "]]&gt;")


def item_text(arguments):
    with open(arguments.signature, "rb") as file:
        signature = base64.b64encode(file.read()).decode()
    with open(arguments.changes, encoding="utf-8") as file:
        description = notes(file.read())
    return f"""    <item>
      <title>Version {arguments.version}</title>
      <pubDate>{email.utils.formatdate()}</pubDate>
      <sparkle:version>{arguments.version}</sparkle:version>
      <description><![CDATA[{description}]]></description>
      <enclosure url={quoteattr(arguments.url)} length="{os.path.getsize(arguments.package)}"
                 type="application/vnd.debian.binary-package"
                 sparkle:os="linux" sparkle:edSignature="{signature}"/>
    </item>
"""


def write_whole(path, text):
    with open(path + ".new", "w", encoding="utf-8") as file:
        file.write(text)
        file.flush()
        os.fsync(file.fileno())
    os.replace(path + ".new", path)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("command", choices=("check", "write"))
    for option in ("version", "feed", "package", "signature", "changes", "url", "item"):
        parser.add_argument(f"--{option}")
    arguments = parser.parse_args()
    feed = read_feed(arguments.feed) if arguments.feed else None
    if feed:
        require_newer(feed, arguments.version)
    if arguments.command == "check":
        return
    item = item_text(arguments)
    write_whole(arguments.item, item)
    if feed:
        # Last in its channel: the order means nothing, and what is there stays as it is.
        head, _, tail = feed.rpartition("</channel>")
        write_whole(arguments.feed, head.rstrip() + "\n" + item + "  </channel>" + tail)


if __name__ == "__main__":
    main()
