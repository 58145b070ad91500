"""Prints the cells of an .xlsx: sheet, cell, kind (t text, n number), number format, bold, value; then frozen rows and widths."""
import re
import sys
import zipfile
import xml.etree.ElementTree as tree

NS = {"m": "http://schemas.openxmlformats.org/spreadsheetml/2006/main"}
book = zipfile.ZipFile(sys.argv[1])


def read(name):
    return tree.fromstring(book.read(name))


styles = read("xl/styles.xml")
formats = {f.get("numFmtId"): f.get("formatCode") for f in styles.iterfind("m:numFmts/m:numFmt", NS)}
fonts = [font.find("m:b", NS) is not None for font in styles.iterfind("m:fonts/m:font", NS)]
cells = list(styles.iterfind("m:cellXfs/m:xf", NS))
shared = []
if "xl/sharedStrings.xml" in book.namelist():
    shared = ["".join(item.itertext()) for item in read("xl/sharedStrings.xml")]

for number, sheet in enumerate(read("xl/workbook.xml").iterfind("m:sheets/m:sheet", NS), 1):
    body = read(f"xl/worksheets/sheet{number}.xml")
    name = sheet.get("name")
    pane = body.find("m:sheetViews/m:sheetView/m:pane", NS)
    if pane is not None:
        print(f"{name}|frozen|{pane.get('ySplit')}")
    for column in body.iterfind("m:cols/m:col", NS):
        print(f"{name}|width|{column.get('min')}|{round(float(column.get('width')))}")
    for cell in body.iterfind("m:sheetData/m:row/m:c", NS):
        style = cells[int(cell.get("s", 0))]
        code = formats.get(style.get("numFmtId"), "General" if style.get("numFmtId") == "0" else "#" + style.get("numFmtId"))
        bold = "b" if fonts[int(style.get("fontId"))] else "-"
        kind = cell.get("t")
        if kind == "inlineStr":
            value = "".join(cell.find("m:is", NS).itertext())
        elif kind == "s":
            value = shared[int(cell.find("m:v", NS).text)]
        else:
            value = cell.find("m:v", NS).text
        print(f"{name}|{cell.get('r')}|{'t' if kind in ('inlineStr', 's') else 'n'}|{code}|{bold}|{value}")
