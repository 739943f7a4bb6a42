"""What scripts/interface lets become of an interface that people rely on."""

import importlib.machinery
import importlib.util
import pathlib
import sys
import unittest

SCRIPT = str(pathlib.Path(__file__).resolve().parents[2] / "scripts" / "interface")
# Nothing is to be written beside the script.
sys.dont_write_bytecode = True
loader = importlib.machinery.SourceFileLoader("interface", SCRIPT)
spec = importlib.util.spec_from_loader("interface", loader)
interface = importlib.util.module_from_spec(spec)
loader.exec_module(interface)

HAS = {"symbol f()", "size View 8"}


def state(version="a/1.0", soname="0.1", released="yes", lines=frozenset(HAS)):
    return {"interface": version, "soname": soname, "released": released, "lines": set(lines)}


class Interface(unittest.TestCase):
    def refused(self, kept, found, word):
        self.assertIn(word, interface.objection(kept, found) or "")

    def test_it_may_stay_as_it_is(self):
        self.assertIsNone(interface.objection(state(), state()))
        self.assertEqual(interface.differences(state(), state()), [])

    def test_before_its_release_it_may_become_anything(self):
        self.assertIsNone(interface.objection(state(released="no"), state(lines={"symbol g()"})))

    def test_what_was_promised_may_not_go_within_a_soname(self):
        self.refused(state(), state(lines={"symbol f()"}), "size View 8")
        self.refused(state(), state(lines={"symbol f()", "size View 16"}), "has promised")

    def test_what_is_added_needs_a_higher_second_number(self):
        more = HAS | {"symbol g()"}
        self.refused(state(), state(lines=more), "symbol g()")
        self.assertIsNone(interface.objection(state(), state(version="a/1.1", lines=more)))

    def test_soname_and_first_number_change_together(self):
        self.refused(state(), state(soname="0.2", lines={"symbol g()"}), "new first number")
        self.refused(state(), state(version="a/2.0"), "new soname")
        self.assertIsNone(interface.objection(state(), state(version="a/2.0", soname="0.2", lines={"symbol g()"})))

    def test_each_difference_is_named(self):
        told = interface.differences(state(), state(version="a/1.1", lines={"symbol f()", "symbol g()"}))
        self.assertEqual(told, ["interface: a/1.0, now a/1.1", "gone: size View 8", "new: symbol g()"])

    def test_what_is_written_is_read_again(self):
        self.assertEqual(interface.parse(interface.written(state())), state())


if __name__ == "__main__":
    unittest.main()
