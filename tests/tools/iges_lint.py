#!/usr/bin/env python3
"""Structural checker for IGES 5.x files written by our exporter (standard library only).

It does not replace a CAD reader; it catches the mistakes a reader may silently repair:
line layout, section order and sequence numbers, Terminate counts, directory-entry /
parameter-data cross pointers, and the parameter counts and basic validity of the
entities we write (128, 126, 141, 143, plus pointer checks for 142 and 144), and that the
property pointers after the parameters of 116 and 128 (the names) point at 406 entities.

Usage:  python3 iges_lint.py FILE.igs [FILE2.igs ...]
Prints an entity count by type/form, then 'ERROR' / 'WARN' lines; the exit status is 1
if any ERROR was found, else 0.
"""
import sys
from collections import Counter


class Report:
    def __init__(self):
        self.errors, self.warnings = [], []

    def err(self, msg):
        self.errors.append(msg)

    def warn(self, msg):
        self.warnings.append(msg)


def split_params(text, pdelim, rdelim):
    """Split free-format parameter text into tokens (Hollerith strings kept whole)."""
    toks, i, cur, n = [], 0, "", len(text)
    while i < n:
        ch = text[i]
        if ch == rdelim:
            toks.append(cur.strip())
            return toks, True
        if ch == pdelim:
            toks.append(cur.strip())
            cur = ""
            i += 1
            continue
        if ch == "H" and cur.strip().isdigit():      # nH + n characters
            count = int(cur.strip())
            cur = text[i + 1:i + 1 + count]
            toks.append("H:" + cur)
            i = i + 1 + count
            cur = ""
            # skip to the delimiter that follows the string
            while i < n and text[i] not in (pdelim, rdelim):
                i += 1
            if i < n and text[i] == rdelim:
                return toks, True
            i += 1
            continue
        cur += ch
        i += 1
    if cur.strip():
        toks.append(cur.strip())
    return toks, False


def num(tok):
    return float(tok.replace("D", "E").replace("d", "e")) if tok not in ("", None) else 0.0


def check_file(path):
    rep = Report()
    with open(path, "r", newline="") as f:
        raw = f.read().splitlines()
    lines = [l for l in raw if l != ""]
    sections = {"S": [], "G": [], "D": [], "P": [], "T": []}
    order = "SGDPT"
    last = 0
    for k, line in enumerate(lines, 1):
        if len(line) != 80:
            rep.err("line %d: length %d, expected 80 columns" % (k, len(line)))
            line = line.ljust(80)
        letter = line[72]
        if letter not in sections:
            rep.err("line %d: section letter %r in column 73" % (k, letter))
            continue
        if order.index(letter) < last:
            rep.err("line %d: section %s after section %s" % (k, letter, order[last]))
        last = max(last, order.index(letter))
        try:
            seq = int(line[73:80])
        except ValueError:
            rep.err("line %d: bad sequence number %r" % (k, line[73:80]))
            seq = -1
        sections[letter].append((seq, line))
    for letter in "SGDP":
        for expect, (seq, _) in enumerate(sections[letter], 1):
            if seq != expect:
                rep.err("section %s: sequence %d found where %d expected" % (letter, seq, expect))
                break
    if len(sections["T"]) != 1:
        rep.err("expected exactly one Terminate line, found %d" % len(sections["T"]))
    else:
        t = sections["T"][0][1]
        for j, letter in enumerate("SGDP"):
            field = t[8 * j:8 * j + 8]
            if field[0] != letter or int(field[1:]) != len(sections[letter]):
                rep.err("Terminate field %r does not match %d %s lines" % (field, len(sections[letter]), letter))

    # Global section
    gtext = "".join(l[:72] for _, l in sections["G"])
    pdelim, rdelim = ",", ";"
    if gtext.startswith("1H"):
        pdelim = gtext[2]
        if gtext[3] != pdelim:
            rep.err("Global: parameter delimiter not followed by itself")
        if gtext[4:6] == "1H":
            rdelim = gtext[6]
    gtoks, closed = split_params(gtext, pdelim, rdelim)
    if not closed:
        rep.err("Global section not terminated by the record delimiter")
    units = {1: "inch", 2: "mm", 3: "see field 15", 4: "ft", 5: "mile", 6: "m", 7: "km",
             8: "mil", 9: "micron", 10: "cm", 11: "microinch"}
    info = {}
    try:
        info["units"] = units.get(int(num(gtoks[13])), "?")
        info["unit_name"] = gtoks[14][2:] if gtoks[14].startswith("H:") else gtoks[14]
        info["resolution"] = num(gtoks[18])
        info["version"] = int(num(gtoks[22]))
    except (IndexError, ValueError):
        rep.err("Global section: fewer fields than expected (need at least 23)")

    # Directory entries
    dlines = [l for _, l in sections["D"]]
    if len(dlines) % 2:
        rep.err("odd number of directory-entry lines")
    de = {}
    for i in range(0, len(dlines) - 1, 2):
        l1, l2 = dlines[i], dlines[i + 1]
        seq = i + 1
        try:
            f1 = [l1[8 * j:8 * j + 8] for j in range(9)]
            f2 = [l2[8 * j:8 * j + 8] for j in range(9)]
            etype, ptr = int(f1[0]), int(f1[1])
            status = f1[8].strip()
            if int(f2[0]) != etype:
                rep.err("DE %d: entity type %s on line 2 differs from %d" % (seq, f2[0].strip(), etype))
            nlines = int(f2[3])
            form = int(f2[4]) if f2[4].strip() else 0
        except ValueError:
            rep.err("DE %d: non-integer field" % seq)
            continue
        de[seq] = dict(type=etype, ptr=ptr, nlines=nlines, form=form, status=status)

    # Parameter data
    plines = [l for _, l in sections["P"]]
    params = {}
    for seq, d in de.items():
        chunk = plines[d["ptr"] - 1:d["ptr"] - 1 + d["nlines"]]
        if len(chunk) != d["nlines"] or d["ptr"] < 1:
            rep.err("DE %d: parameter pointer %d / count %d outside the P section" % (seq, d["ptr"], d["nlines"]))
            continue
        for l in chunk:
            try:
                back = int(l[64:72])
            except ValueError:
                back = -1
            if back != seq:
                rep.err("DE %d: P line back-pointer %r (expected %d)" % (seq, l[64:72].strip(), seq))
                break
        toks, closed = split_params("".join(l[:64] for l in chunk), pdelim, rdelim)
        if not closed:
            rep.err("DE %d: parameter record not terminated by %r" % (seq, rdelim))
        try:
            if int(num(toks[0])) != d["type"]:
                rep.err("DE %d: first parameter %s is not the entity type %d" % (seq, toks[0], d["type"]))
        except ValueError:
            rep.err("DE %d: first parameter not numeric" % seq)
        params[seq] = toks
    covered = sum(d["nlines"] for d in de.values())
    if covered != len(plines):
        rep.warn("%d P lines, directory entries account for %d" % (len(plines), covered))

    def ptr_type(seq, owner, allowed, what):
        if seq not in de:
            rep.err("DE %d: %s pointer %d is not a directory entry" % (owner, what, seq))
            return
        if allowed and de[seq]["type"] not in allowed:
            rep.err("DE %d: %s pointer %d is type %d, expected one of %s"
                    % (owner, what, seq, de[seq]["type"], sorted(allowed)))

    def trailing(seq, v, need):
        """The optional pointer groups after an entity's own parameters: NA back pointers to
        associativities, then NP pointers to properties (406). True if they account for all."""
        i = need
        for what, allowed in (("associativity", None), ("property", {406})):
            if i >= len(v):
                return i == len(v)
            n = int(v[i])
            if n < 0 or i + 1 + n > len(v):
                return False
            for j in range(n):
                ptr_type(int(v[i + 1 + j]), seq, allowed, what)
            i += 1 + n
        return i == len(v)

    curves = {100, 102, 104, 110, 112, 126, 130}
    surfaces = {108, 114, 118, 120, 122, 128, 140, 143, 144, 190, 192, 194, 196, 198}
    for seq, toks in params.items():
        t = de[seq]["type"]
        try:
            v = [num(x) if not x.startswith("H:") else 0.0 for x in toks]
            if t == 128:
                k1, k2, m1, m2 = (int(v[1]), int(v[2]), int(v[3]), int(v[4]))
                n1, n2 = k1 + m1 + 2, k2 + m2 + 2
                nw = (k1 + 1) * (k2 + 1)
                need = 10 + n1 + n2 + nw + 3 * nw + 4
                if len(v) < need:
                    rep.err("DE %d (128): %d parameters, %d needed for K1=%d K2=%d M1=%d M2=%d"
                            % (seq, len(v), need, k1, k2, m1, m2))
                    continue
                if len(v) > need and not trailing(seq, v, need):
                    rep.warn("DE %d (128): %d extra trailing parameters" % (seq, len(v) - need))
                su = v[10:10 + n1]
                sv = v[10 + n1:10 + n1 + n2]
                w = v[10 + n1 + n2:10 + n1 + n2 + nw]
                u0, u1, v0, v1 = v[need - 4:need]
                for name, kn in (("U", su), ("V", sv)):
                    if any(kn[i + 1] < kn[i] for i in range(len(kn) - 1)):
                        rep.err("DE %d (128): %s knots not non-decreasing" % (seq, name))
                if any(x <= 0 for x in w):
                    rep.err("DE %d (128): non-positive weight" % seq)
                if int(v[7]) == 1 and max(w) - min(w) > 1e-12 * max(abs(x) for x in w):
                    rep.warn("DE %d (128): PROP3 = 1 (polynomial) but weights differ" % seq)
                if not (su[m1] - 1e-12 <= u0 < u1 <= su[n1 - m1 - 1] + 1e-12):
                    rep.err("DE %d (128): U range [%g, %g] outside knots" % (seq, u0, u1))
                if not (sv[m2] - 1e-12 <= v0 < v1 <= sv[n2 - m2 - 1] + 1e-12):
                    rep.err("DE %d (128): V range [%g, %g] outside knots" % (seq, v0, v1))
            elif t == 116:
                if len(v) < 5:
                    rep.err("DE %d (116): %d parameters, 5 needed" % (seq, len(v)))
                elif not trailing(seq, v, 5):
                    rep.warn("DE %d (116): %d extra trailing parameters" % (seq, len(v) - 5))
            elif t == 126:
                k, m = int(v[1]), int(v[2])
                nk, nw = k + m + 2, k + 1
                need = 7 + nk + nw + 3 * nw + 2
                if len(v) < need:
                    rep.err("DE %d (126): %d parameters, %d needed for K=%d M=%d" % (seq, len(v), need, k, m))
                    continue
                kn = v[7:7 + nk]
                w = v[7 + nk:7 + nk + nw]
                if any(kn[i + 1] < kn[i] for i in range(len(kn) - 1)):
                    rep.err("DE %d (126): knots not non-decreasing" % seq)
                if any(x <= 0 for x in w):
                    rep.err("DE %d (126): non-positive weight" % seq)
                a0, a1 = v[need - 2:need]
                if not (kn[m] - 1e-12 <= a0 < a1 <= kn[nk - m - 1] + 1e-12):
                    rep.err("DE %d (126): parameter range [%g, %g] outside knots" % (seq, a0, a1))
            elif t == 141:
                btype, pref, sptr, ncur = int(v[1]), int(v[2]), int(v[3]), int(v[4])
                ptr_type(sptr, seq, surfaces, "surface")
                i = 5
                for _ in range(ncur):
                    crv, sense, kp = int(v[i]), int(v[i + 1]), int(v[i + 2])
                    ptr_type(crv, seq, curves | {142}, "model-space curve")
                    if sense not in (1, 2):
                        rep.err("DE %d (141): SENSE %d not 1 or 2" % (seq, sense))
                    if btype == 1 and kp < 1:
                        rep.err("DE %d (141): TYPE 1 but no parameter-space curve" % seq)
                    for j in range(kp):
                        ptr_type(int(v[i + 3 + j]), seq, curves, "parameter-space curve")
                    i += 3 + kp
                if i != len(v):
                    rep.err("DE %d (141): %d parameters used, %d present" % (seq, i, len(v)))
            elif t == 143:
                sptr, nb = int(v[2]), int(v[3])
                ptr_type(sptr, seq, surfaces, "surface")
                for j in range(nb):
                    ptr_type(int(v[4 + j]), seq, {141}, "boundary")
                if 4 + nb != len(v):
                    rep.err("DE %d (143): %d parameters, expected %d" % (seq, len(v), 4 + nb))
                for j in range(nb):
                    b = int(v[4 + j])
                    if b in params and int(num(params[b][3])) != sptr:
                        rep.err("DE %d (143): boundary %d refers to surface %s, not %d"
                                % (seq, b, params[b][3], sptr))
            elif t == 142:
                ptr_type(int(v[2]), seq, surfaces, "surface")
                for j, what in ((3, "parameter-space curve"), (4, "model-space curve")):
                    if int(v[j]):
                        ptr_type(int(v[j]), seq, curves, what)
            elif t == 144:
                ptr_type(int(v[1]), seq, surfaces, "surface")
                n2 = int(v[3])
                if int(v[4]):
                    ptr_type(int(v[4]), seq, {142}, "outer boundary")
                for j in range(n2):
                    ptr_type(int(v[5 + j]), seq, {142}, "inner boundary")
        except (IndexError, ValueError) as e:
            rep.err("DE %d (type %d): parameters could not be read (%s)" % (seq, t, e))

    counts = Counter((d["type"], d["form"]) for d in de.values())
    return rep, counts, info


def main(argv):
    if len(argv) < 2:
        print(__doc__)
        return 2
    bad = 0
    for path in argv[1:]:
        print("== %s" % path)
        try:
            rep, counts, info = check_file(path)
        except OSError as e:
            print("   ERROR cannot read: %s" % e)
            bad += 1
            continue
        print("   units: %s (%s), IGES version flag %s, resolution %s"
              % (info.get("units"), info.get("unit_name"), info.get("version"), info.get("resolution")))
        for (t, form), n in sorted(counts.items()):
            print("   type %4d form %2d : %d" % (t, form, n))
        for w in rep.warnings:
            print("   WARN  " + w)
        for e in rep.errors:
            print("   ERROR " + e)
        print("   %d error(s), %d warning(s)" % (len(rep.errors), len(rep.warnings)))
        bad += bool(rep.errors)
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
