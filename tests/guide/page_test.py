# SPDX-License-Identifier: GPL-3.0-or-later
"""How the pages, the sources and what is printed are read."""
import os
import tempfile
import unittest

from guide_commands import is_path, matches
from guide_figures import shown_numbers
from page import Page
from source_texts import readable, tells_failure, texts_of


def texts(source):
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "a.cpp")
        with open(path, "w", encoding="utf-8") as file:
            file.write(source)
        return texts_of(path, "a.cpp")


class PageTest(unittest.TestCase):
    def test_a_block_is_followed_by_what_it_prints(self):
        page = Page("```sh\necho a\n```\n\n```text\na\n```\n\n```sh\ntrue\n```\nand\n```text\nb\n```\n")
        first, _, last, _ = page.blocks
        self.assertEqual(page.expected_after(first).text, "a")
        self.assertIsNone(page.expected_after(last))

    def test_paths_are_told_from_other_code(self):
        self.assertTrue(is_path("~/.config/Veltrix") and is_path("history.sqlite") and is_path(".veltrix.lock"))
        self.assertFalse(is_path("veltrix --measure") or is_path("csv") or is_path("itunes.apple.com"))

    def test_only_figures_may_change_and_only_where_the_page_says_so(self):
        self.assertTrue(matches("rank 7\n", "rank 12", True))
        self.assertFalse(matches("rank 7\n", "rank 12", False))
        self.assertFalse(matches("not ranked\n", "rank 12", True))
        self.assertTrue(matches("a\nb\nc\nd\n", "a\n…\nd", False))
        self.assertFalse(matches("a\nb\n", "a", False))

    def test_numbers_of_a_table_are_those_of_its_values(self):
        self.assertEqual(shown_numbers([["a 25 of", "1,000"], ["2.5", "-3"]]), [1000, 2.5, -3])

    def test_parts_of_a_text_are_put_together(self):
        source = 'x = tr("One "\n  // why\n  "two");\n// "no text"\nchar c = \'"\'; n = 1\'000; y = "three";'
        self.assertEqual([text.text for text in texts(source)], ["One two", "three"])
        joined = texts('x = QStringLiteral("No “") + name + QStringLiteral("” here.");')
        self.assertEqual(readable(joined[0].text), "No “…” here.")

    def test_what_is_thrown_tells_of_a_failure(self):
        thrown, said, other = texts('throw Error(QStringLiteral("it has no text"));'
                                    'say(tr("It could not be read."));say(tr("All is well now."));')
        self.assertTrue(tells_failure(thrown) and tells_failure(said))
        self.assertFalse(tells_failure(other))


if __name__ == "__main__":
    unittest.main()
