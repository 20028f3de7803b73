"""Writes the benchmark site. By default 1,000 files: an index, 399 pages in
ten folders, 500 images, 100 style sheets, every file reachable by links.
Usage: gen_site.py ROOT [--pages N] [--images N] [--sheets N]; a page links
to the next two pages, three random ones, its image and its style sheet when
the site has them."""
import argparse
import os
import random

HOST = "http://www.bench.test"
PAGES = 399
IMAGES = 500
SHEETS = 100


def page_path(i):
    return f"sec{i % 10}/p{i:03d}.html"


def write(root, relative, data):
    path = os.path.join(root, relative)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        f.write(data)


def main(root, pages=PAGES, images=IMAGES, sheets=SHEETS):
    """Writes the site under `root`; answers the number of files written."""
    rng = random.Random(1)
    for i in range(images):
        write(root, f"img/i{i:03d}.gif", b"GIF89a" + rng.randbytes(rng.randint(1000, 20000)))
    for i in range(sheets):
        write(root, f"css/s{i:02d}.css", f"body {{ color: #{i:06x}; }}\n".encode() * 40)
    for i in range(pages):
        links = [i + 1, i + 2] + [rng.randrange(pages) for _ in range(3)]
        sheet = f'<link rel="stylesheet" href="{HOST}/css/s{i % sheets:02d}.css">' if sheets else None
        body = [sheet] if sheet else []
        body += [f"<h1>Page {i}</h1>", "<p>" + "Some text for the page. " * 60 + "</p>"]
        body += [f'<a href="{HOST}/{page_path(n)}">page {n}</a>' for n in links if n < pages]
        body += [f'<img src="{HOST}/img/i{n:03d}.gif">' for n in (i, i + pages) if n < images]
        write(root, page_path(i), ("<html><body>" + "\n".join(body) + "</body></html>\n").encode())
    write(root, "index.html",
          f'<html><body><a href="{HOST}/{page_path(0)}">start</a></body></html>\n'.encode())
    return images + sheets + pages + 1


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Writes the crawl benchmark's site.")
    parser.add_argument("root")
    parser.add_argument("--pages", type=int, default=PAGES)
    parser.add_argument("--images", type=int, default=IMAGES)
    parser.add_argument("--sheets", type=int, default=SHEETS)
    args = parser.parse_args()
    main(args.root, args.pages, args.images, args.sheets)
