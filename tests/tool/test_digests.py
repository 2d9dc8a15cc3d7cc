#!/usr/bin/env python3
"""Digests of files, compared with hashlib, and lists of them that are checked."""

import hashlib
import os
import sys
import unittest

from tool_case import INPUT_OUTPUT, IS_WINDOWS, MISMATCH, ToolTest, read_terminal, sha1


class DigestTest(ToolTest):
    def test_every_digest_of_files_of_all_sizes(self):
        sizes = (0, 1, 55, 56, 64, 262143, 262144, 262145, 1000003)
        contents = {f"f{size}": bytes(i * 7 % 251 for i in range(size)) for size in sizes}
        for name, data in contents.items():
            self.write(name, data)
        for digest in ("md5", "SHA1", "sha256", "sha384", "sha512"):
            expected = "".join(f"{hashlib.new(digest, data).hexdigest()}  {name}\n" for name, data in contents.items())
            self.assertEqual(self.run_tool("digest", digest, *contents)[0], expected.encode())

    def test_sha256_of_more_than_2_to_the_32_bits(self):
        self.write_zeros("long", (512 << 20) + 1)
        # sha256sum of as many zero bytes
        expected = b"7c40fe5ce847740d0f0d0cdde3949d6585804cdec3ae61a15b923165699c8137  long\n"
        self.assertEqual(self.run_tool("digest", "sha256", "long")[0], expected)

    def test_standard_input_is_binary(self):
        data = b"a\r\nb\n\x1a\0\xff" * 3  # 0x1a ends a text file on Windows
        expected = f"{sha1(data)}  -\n".encode()
        self.write("file", data)
        out, _ = self.run_tool("digest", "sha1", "-", "file", "-", stdin=data)
        self.assertEqual(out, expected + f"{sha1(data)}  file\n{sha1(b'')}  -\n".encode())

    def test_names_that_look_like_something_else(self):
        names = ["list", "[a,b]", "[a]", "{}", "%%", "++", "-1", "--check", "[]", " with space", "ünï 日本 😀"]
        for name in names:
            self.write(os.fsencode(name), name.encode())
        lines = [f"{sha1(name.encode())}  {name}\n" for name in names]
        out, _ = self.run_tool("digest", "sha1", "--", *names)
        self.assertEqual(out.decode(), "".join(lines))
        self.assertEqual(self.run_tool("digest", "sha1", "{}")[0].decode(), lines[3])
        self.run_tool("digest", "sha1", "--check", "--quiet", stdin=out)

    def test_other_files_follow_an_unreadable_one(self):
        os.mkdir("folder")
        self.write("good", b"abc")
        out, err = self.run_tool("digest", "sha1", "missing", "folder", "good", code=INPUT_OUTPUT)
        self.assertEqual(out, f"{sha1(b'abc')}  good\n".encode())
        self.assertRegex(err, rb"^morvane: missing: No such .*\nmorvane: folder: Is a directory\n$")

    def test_names_are_escaped(self):
        if IS_WINDOWS:
            self.skipTest("no file can have such a name")
        names = ["back\\slash", "line\nfeed", "carriage\rreturn", "\\n"]
        for name in names:
            self.write(name, name.encode())
        escaped = ["back\\\\slash", "line\\nfeed", "carriage\\rreturn", "\\\\n"]
        out, _ = self.run_tool("digest", "sha1", *names)
        self.assertEqual(out.decode(), "".join(f"\\{sha1(n.encode())}  {e}\n" for n, e in zip(names, escaped)))
        out, _ = self.run_tool("digest", "sha1", "-c", stdin=out)
        self.assertEqual(out.decode(), "".join(f"\\{e}: OK\n" for e in escaped))

    def test_progress_is_for_terminals_and_erased(self):
        if IS_WINDOWS:
            self.skipTest("needs a console")
        self.write_zeros("long", 70 << 20)
        expected = f"{sha1(bytes(70 << 20))}  long\n".encode()
        ours, theirs = os.openpty()
        self.assertEqual(self.run_tool("digest", "sha1", "long", stderr=theirs)[0], expected)
        os.close(theirs)
        shown = read_terminal(ours, 4096)
        self.assertRegex(shown, rb"^\r\d+ %  \d+ MB/s +\r.* +\r$")
        self.assertEqual(self.run_tool("digest", "sha1", "long"), (expected, b""))


class CheckTest(ToolTest):
    def setUp(self):
        super().setUp()
        for name in ("one", "two", "a) = (b"):
            self.write(name, name.encode())

    @staticmethod
    def line(name, data=None, form="{}  {}\n"):
        return form.format(sha1(name.encode() if data is None else data), name).encode()

    def test_every_form_of_a_line(self):
        upper = sha1(b"two").upper().encode()
        lines = [self.line("one"), self.line("two", form="{} *{}\r\n"), upper + b"  two\n",
                 b"SHA1 (one) = " + sha1(b"one").encode() + b"\n", b"sha1(two)= " + upper + b"\r\n",
                 b"SHA1 (a) = (b) = " + sha1(b"a) = (b").encode() + b"\n",
                 b"\\" + self.line("one"), b"# a comment\n", b"\n",
                 self.line("two").rstrip()]  # the last line need not end
        self.write("sums", b"".join(lines))
        out, _ = self.run_tool("digest", "sha1", "--check", "sums")
        self.assertEqual(out, b"one: OK\ntwo: OK\ntwo: OK\none: OK\ntwo: OK\na) = (b: OK\none: OK\ntwo: OK\n")
        self.assertEqual(self.run_tool("digest", "sha1", "-c", "--quiet", "sums")[0], b"")

    def test_bad_lines_are_counted(self):
        good, hexed = self.line("one"), sha1(b"one").encode()
        bad = [b"text\n", hexed + b" one\n", hexed[1:] + b"  one\n", hexed + b"0  one\n", hexed + b"  \n", hexed[1:] + b"g  one\n",
               b"MD5 (one) = " + hexed + b"\n", b"SHA1 (one = " + hexed + b"\n", b"\\" + hexed + b"  o\\ne\\\n",
               hexed + b"  one\0x\n", hexed + b"  -\n", b"SHA1 () = " + hexed + b"\n", b"SHA1 (one) =\n", b"y" * (3 << 20) + b"\n"]
        out, err = self.run_tool("digest", "sha1", "-c", "--quiet", stdin=b"".join(bad) + self.line("two", b"") + good,
                                 code=MISMATCH)
        self.assertEqual(out, b"two: FAILED\n")
        self.assertIn(b"%d lines are not in the format" % len(bad), err)
        self.run_tool("digest", "sha1", "-c", stdin=b"".join(bad), code=INPUT_OUTPUT)
        self.run_tool("digest", "sha1", "-c", code=INPUT_OUTPUT)

    def test_mismatch_outranks_an_unreadable_file(self):
        self.write("unreadable", self.line("missing") + self.line("one"))
        self.write("wrong", self.line("two", b"") + self.line("one"))
        out, err = self.run_tool("digest", "sha1", "-c", "unreadable", code=INPUT_OUTPUT)
        self.assertEqual(out, b"missing: FAILED open or read\none: OK\n")
        self.assertIn(b"unreadable: warning: 1 listed file could not be read", err)
        out, err = self.run_tool("digest", "sha1", "-c", "--quiet", "wrong", "none", "unreadable", code=MISMATCH)
        self.assertEqual(out, b"two: FAILED\nmissing: FAILED open or read\n")
        self.assertIn(b"wrong: warning: 1 digest does not match", err)
        self.assertRegex(err, rb"morvane: none: No such")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
