"""Writes a mirror for the offline check benchmark: the benchmark site's
shape scaled up, as a crawl saves it (one folder per host, pages in section
folders). PAGES pages of about 4 KB in sections of 1,000, each with
LINKS_PER_PAGE links: a style sheet, images, other pages through "../", and one
address on another host; every tenth page has a link to a page that was not
saved. Usage: gen_mirror.py FOLDER [PAGES] [LINKS_PER_PAGE]"""
import os
import random
import sys

IMAGES = 10000
SHEETS = 100
SECTION = 1000


def page_path(i):
    return f"sec{i // SECTION:03d}/p{i:06d}.html"


def write(path, data):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        f.write(data)


def main(root, pages, links_per_page):
    rng = random.Random(1)
    host = os.path.join(root, "www.bench.test")
    for i in range(IMAGES):
        write(os.path.join(host, f"img/i{i:05d}.gif"), b"GIF89a" + bytes(64))
    for i in range(SHEETS):
        write(os.path.join(host, f"css/s{i:02d}.css"), b"body { color: #123456; }\n")
    text = "<p>" + "Some text for the page. " * 60 + "</p>"
    for i in range(pages):
        links = [f'<link rel="stylesheet" href="../css/s{i % SHEETS:02d}.css">',
                 '<a href="http://www.other.test/">elsewhere</a>']
        links += [f'<img src="../img/i{rng.randrange(IMAGES):05d}.gif">' for _ in range(4)]
        while len(links) < links_per_page:
            links.append(f'<a href="../{page_path(rng.randrange(pages))}">page</a>')
        if i % 10 == 0:
            links[-1] = f'<a href="../sec{i // SECTION:03d}/gone{i:06d}.html">gone</a>'
        body = f"<html><head><title>Page {i}</title></head><body><h1>Page {i}</h1>{text}\n"
        write(os.path.join(host, page_path(i)), (body + "\n".join(links) + "</body></html>\n").encode())
    write(os.path.join(host, "index.html"), f'<a href="{page_path(0)}">start</a>\n'.encode())


if __name__ == "__main__":
    main(sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 100000,
         int(sys.argv[3]) if len(sys.argv) > 3 else 30)
