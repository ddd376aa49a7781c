"""Packages as lists of (name, bytes): read, written, and a small job that uses what a job can."""
import io
import pathlib
import struct
import zipfile
import zlib

HOUSE = pathlib.Path(__file__).resolve().parents[3]


def unpack(data):
    """The items of a package; none where it is too damaged."""
    try:
        with zipfile.ZipFile(io.BytesIO(data)) as package:
            return [(entry.orig_filename.encode(), package.read(entry)) for entry in package.infolist()]
    except Exception:
        return []


def pack(items):
    """A package of items whose names may be any bytes, and the same twice."""
    body, directory = b"", b""
    for name, data in items:
        deflate = zlib.compressobj(1, zlib.DEFLATED, -15)
        packed = deflate.compress(data) + deflate.flush()
        utf8 = 0 if name.isascii() else 0x800
        common = struct.pack("<HHHHHIIIHH", 20, utf8, 8, 0, 0x21, zlib.crc32(data), len(packed), len(data),
                             len(name), 0)
        directory += b"PK\1\2\x14\0" + common + struct.pack("<HHHII", 0, 0, 0, 0, len(body)) + name
        body += b"PK\3\4" + common + name + packed
    return body + directory + struct.pack("<4sHHHHIIH", b"PK\5\6", 0, 0, len(items), len(items), len(directory),
                                          len(body), 0)


XPS = "http://schemas.microsoft.com/xps/2005/06"
OPENXPS = "http://schemas.openxps.org/oxps/v1.0"
OPC = "http://schemas.openxmlformats.org/package/2006/"
TYPES = {
    "rels": "application/vnd.openxmlformats-package.relationships+xml",
    "fdseq": "application/vnd.ms-package.xps-fixeddocumentsequence+xml",
    "fdoc": "application/vnd.ms-package.xps-fixeddocument+xml",
    "fpage": "application/vnd.ms-package.xps-fixedpage+xml",
    "dict": "application/vnd.ms-package.xps-resourcedictionary+xml",
    "frag": "application/vnd.ms-package.xps-storyfragments+xml",
    "odttf": "application/vnd.ms-package.obfuscated-opentype",
    "png": "image/png",
    "xml": "application/vnd.ms-printing.printticket+xml",
}


def relationships(base, *links):
    """The markup of links, each a kind and a target; kinds are the base's unless they are whole addresses."""
    return "<Relationships xmlns='%srelationships'>%s</Relationships>" % (OPC, "".join(
        "<Relationship Id='R%d' Type='%s' Target='%s'/>" % (i, kind if ":" in kind else f"{base}/{kind}", target)
        for i, (kind, target) in enumerate(links)))


def ticket(feature, option):
    framework = "http://schemas.microsoft.com/windows/2003/08/printing/printschema"
    return (f"<psf:PrintTicket xmlns:psf='{framework}framework' xmlns:psk='{framework}keywords' version='1'>"
            f"<psf:Feature name='psk:{feature}'><psf:Option name='psk:{option}'/></psf:Feature></psf:PrintTicket>")


def small_job(base=XPS, in_pieces=False):
    """Two documents of two pages with tickets on all levels, settings, a font, a picture and a dictionary."""
    font = "/Resources/00010203-0405-0607-0809-0A0B0C0D0E0F.odttf"
    parts = {
        "[Content_Types].xml": f"<Types xmlns='{OPC}content-types'>%s</Types>" % "".join(
            f"<Default Extension='{extension}' ContentType='{kind}'/>" for extension, kind in TYPES.items()),
        "_rels/.rels": relationships(base, ("fixedrepresentation", "/Job.fdseq")),
        "Job.fdseq": f"<FixedDocumentSequence xmlns='{base}'>"
                     "<DocumentReference Source='1/Doc.fdoc'/><DocumentReference Source='2/Doc.fdoc'/>"
                     "</FixedDocumentSequence>",
        "_rels/Job.fdseq.rels": relationships(base, ("printticket", "/Tickets/Job.xml")),
        # It carries the driver's settings in both of their forms.
        "Tickets/Job.xml": (HOUSE / "Samples/Queues/ColorOffice/default-ticket.xml").read_text(),
        "Tickets/Document.xml": ticket("DocumentCollate", "Uncollated"),
        "Tickets/Page.xml": ticket("PageOrientation", "Landscape"),
        font[1:]: "\0" * 40,
        "Resources/Picture.png": "picture",
        "Resources/Brushes.dict": f"<ResourceDictionary xmlns='{base}'/>",
        "Resources/_rels/Brushes.dict.rels": relationships(base, ("required-resource", "Picture.png")),
    }
    for document in "12":
        parts[f"{document}/Doc.fdoc"] = (
            f"<FixedDocument xmlns='{base}'><PageContent Source='1.fpage' Width='816' Height='1056'/>"
            "<PageContent Source='2.fpage'/></FixedDocument>")
        parts[f"{document}/_rels/Doc.fdoc.rels"] = relationships(
            base, ("printticket", "/Tickets/Document.xml"), ("restricted-font", font))
        for page in "12":
            parts[f"{document}/{page}.fpage"] = (
                f"<FixedPage xmlns='{base}' xmlns:x='http://schemas.microsoft.com/winfx/2006/xaml' Width='816' "
                f"Height='1056' xml:lang='en'><FixedPage.Resources><ResourceDictionary Source='/Resources/Brushes.dict'/>"
                f"</FixedPage.Resources><Glyphs FontUri='{font}' UnicodeString='Page {page}' OriginX='9' OriginY='9' "
                f"FontRenderingEmSize='12' Fill='#000'/><!-- {document} --></FixedPage>")
            parts[f"{document}/{page}.frag"] = f"<StoryFragments xmlns='{base}/documentstructure'/>"
            parts[f"{document}/_rels/{page}.fpage.rels"] = relationships(
                base, ("required-resource", font), ("required-resource", "/Resources/Brushes.dict"),
                ("printticket", "/Tickets/Page.xml"), ("storyfragments", f"{page}.frag"))
    items = [(name.encode(), text.encode()) for name, text in parts.items()]
    if not in_pieces:
        return items
    halves = [[(name + b"/[0].piece", data[:len(data) // 2]), (name + b"/[1].last.piece", data[len(data) // 2:])]
              for name, data in items]
    return [half[i] for i in (0, 1) for half in halves]
