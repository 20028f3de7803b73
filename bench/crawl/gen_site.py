"""Writes the benchmark site: 1,000 files (an index, 399 pages in ten
folders, 500 images, 100 style sheets), every file reachable by links."""
import os
import random
import sys

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


def main(root):
    rng = random.Random(1)
    for i in range(IMAGES):
        write(root, f"img/i{i:03d}.gif", b"GIF89a" + rng.randbytes(rng.randint(1000, 20000)))
    for i in range(SHEETS):
        write(root, f"css/s{i:02d}.css", f"body {{ color: #{i:06x}; }}\n".encode() * 40)
    for i in range(PAGES):
        links = [i + 1, i + 2] + [rng.randrange(PAGES) for _ in range(3)]
        images = [i] + ([i + PAGES] if i + PAGES < IMAGES else [])
        body = [f'<link rel="stylesheet" href="{HOST}/css/s{i % SHEETS:02d}.css">',
                f"<h1>Page {i}</h1>", "<p>" + "Some text for the page. " * 60 + "</p>"]
        body += [f'<a href="{HOST}/{page_path(n)}">page {n}</a>' for n in links if n < PAGES]
        body += [f'<img src="{HOST}/img/i{n:03d}.gif">' for n in images]
        write(root, page_path(i), ("<html><body>" + "\n".join(body) + "</body></html>\n").encode())
    write(root, "index.html",
          f'<html><body><a href="{HOST}/{page_path(0)}">start</a></body></html>\n'.encode())


if __name__ == "__main__":
    main(sys.argv[1])
