"""What a script needs for the least of the library's work: parse a YIN file and list its leaves."""
import sys

from lxml import etree

YIN = "{urn:ietf:params:xml:ns:yang:yin:1}"

for leaf in etree.parse(sys.argv[1]).iter(YIN + "leaf", YIN + "leaf-list"):
    print(leaf.get("name"))
