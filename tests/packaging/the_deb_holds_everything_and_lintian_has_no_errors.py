"""Makes the .deb out of a build, and fails unless it holds all that a user is promised: the program with its menu entry, icons,
manual pages and data for the software centre, the bench with its benches, and the documents, whose links lead to files of
the package. lintian must find no error.

Called as TEST SOURCES BUILD CPACK.
"""

import html.parser
import pathlib
import re
import subprocess
import sys
import tempfile

sources, build, cpack = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]

promised = {
    "bin/vantrel", "bin/vantrel-bench", "lib/vantrel/vantrel",
    "share/applications/vantrel.desktop", "share/metainfo/org.vantrel.vantrel.metainfo.xml",
    "share/man/man1/vantrel.1.gz", "share/man/man1/vantrel-bench.1.gz",
    "share/icons/hicolor/scalable/apps/vantrel.svg",
    "share/doc/vantrel/copyright", "share/doc/vantrel/LICENSE", "share/doc/vantrel/changelog.gz",
    "share/doc/vantrel/README.html",
}
promised |= {f"share/icons/hicolor/{size}x{size}/apps/vantrel.png" for size in (16, 22, 24, 32, 48, 64, 128, 256)}
promised |= {f"share/vantrel/benches/{bench.name}" for bench in (sources / "bench/benches").iterdir()}
promised |= {f"share/doc/vantrel/docs/{page.stem}.html" for page in (sources / "docs").glob("*.md")}
promised |= {f"share/doc/vantrel/{picture.relative_to(sources)}" for picture in (sources / "docs").glob("*/*")}


class Links(html.parser.HTMLParser):
    """Where a page leads within the package."""

    def __init__(self, page):
        super().__init__()
        self.targets = set()
        self.feed(page.read_text())

    def handle_starttag(self, tag, attributes):
        target = dict(attributes).get({"a": "href", "img": "src"}.get(tag), "") or ""
        if target and not re.match(r"[a-z]+:|#", target):
            self.targets.add(target.partition("#")[0])


def Run(*command):
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        sys.exit(f"{command[0]} fails:\n{done.stdout}")


Run(sources / "packaging/make-files", build, build / "packed")
with tempfile.TemporaryDirectory() as scratch:
    scratch = pathlib.Path(scratch)
    Run(cpack, "-G", "DEB", "--config", build / "CPackConfig.cmake", "-B", scratch / "made")
    package, = (scratch / "made").glob("*.deb")
    Run("dpkg-deb", "--extract", package, scratch / "tree")
    root = scratch / "tree/usr"
    missing = [path for path in sorted(promised) if not (root / path).is_file()]
    if not any((root / "lib/vantrel/bench").glob("libvisa.so.0*")):
        missing.append("the bench's library")
    if missing:
        sys.exit(f"the package lacks {missing}")
    dead = [f"{page.name}: {target}" for page in (root / "share/doc/vantrel").rglob("*.html")
            for target in sorted(Links(page).targets) if not (page.parent / target).exists()]
    if dead:
        sys.exit(f"links that lead nowhere: {dead}")
    Run("lintian", "--fail-on", "error", "--tag-display-limit", "0",
        "--suppress-tags", "bad-distribution-in-changes-file", package)
