#!/usr/bin/env python3
"""Checks that #include arrows between the folders of src/ point one way, that the companion stands on base alone, and that
system headers stay in platform/.

usage: check_layers.py ROOT
"""

import re
import sys
from pathlib import Path

# A folder may include itself and the folders of the rows above its own.
LAYERS = [{"base"}, {"cpu", "platform", "companion"}, {"hash", "cipher", "bignum"}, {"random"}, {"prime"}, {"asn1", "pk", "ecc"}, {"csp"},
          {"toolkit"}]
# Within the row of public-key folders: the DER records know the key records, and signatures use the plain reader.
WITHIN_A_ROW = {("asn1", "pk"), ("pk", "asn1"), ("ecc", "asn1")}
SYSTEM_HEADERS = re.compile(r"^(windows|unistd|fcntl|pthread|winver|bcrypt|sys/.*)(\.h)?$")


def main(root):
    rank = {folder: i for i, row in enumerate(LAYERS) for folder in row}
    errors, files = [], 0
    for path in sorted([*Path(root, "src").rglob("*"), *Path(root, "companion").rglob("*")]):
        if path.suffix not in (".h", ".cpp"):
            continue
        files += 1
        folder = path.relative_to(root).parts[1 if path.is_relative_to(Path(root, "src")) else 0]
        for target in re.findall(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', path.read_text(encoding="utf-8"), re.M):
            other = target.split("/")[0]
            if other in ("tools", "tests") or (other == "companion" and folder != "companion"):
                errors.append(f"{path}: includes {target}")
            elif other in rank and "/" in target and other != folder:
                if rank[other] >= rank[folder] and (folder, other) not in WITHIN_A_ROW:
                    errors.append(f"{path}: {folder} must not include {target}")
            elif SYSTEM_HEADERS.match(target) and folder != "platform":
                errors.append(f"{path}: {target} belongs into platform/")
        if folder not in rank:
            errors.append(f"{path}: {folder} has no layer")
    print("\n".join(errors) if errors else f"{files} files, every include points downward")
    return 1 if errors or not files else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
