# SPDX-License-Identifier: Apache-2.0
"""A program of another process holds objects, gives them back, or dies with them."""

from support import CLIENT, HOVEX, MODULE, SOURCE, HovexTest, main, run, start


class Clients(HovexTest):
    def test_host_ends_with_the_last_object(self):
        self.assertEqual(["without its case: 1", "runs: 1", "ended: 1"], self.client("drop"))

    def test_client_that_dies_leaves_the_others_whole(self):
        # The gas has 30 C.
        lines = self.client("survive")
        abandoned = lines.pop(1)
        self.assertEqual(["before: 303.15", "the other one died: 3", "after: 303.15",
                          "a new one: 303.15, in a process of its own: 1"], lines)
        # The system gives up the objects of the dead after a while; here it never does.
        self.assertEqual(["was there: 1"], self.client("end", int(abandoned)))

    def test_another_thread_calls_through_a_proxy(self):
        self.assertEqual(["on another thread: 303.15, on this one: 303.15"], self.client("threads"))

    def test_wrong_calls_have_codes_of_the_system(self):
        self.assertEqual(
            ["ids: 1 1", "count: 8002000E", "type: 80020005", "no member: 80020003",
             "no store: 80020003", "exception: 80020009 80040204 Fixtop", "type information: 1 0",
             "none: 1"], self.client("calls"))

    def test_walk_can_be_copied_and_begun_again(self):
        self.assertEqual(["first: Streams 0 1", "skip: 0", "end: 1 0", "copy: UnitOps",
                          "reset: 0", "beyond: 1"], self.client("walk"))

    def test_host_has_the_providers_from_the_module(self):
        listed = (SOURCE / "tools/hovex/providers.txt").read_text(encoding="utf-8").splitlines()
        names = [line for line in listed if not line.startswith("#")]
        self.assertGreater(len(names), 8)
        self.assertEqual([f"{name}: 1" for name in names],
                         self.client("providers", HOVEX, HOVEX.with_name(MODULE.name), *names))

    def test_one_that_was_started_by_hand_serves_whoever_comes_first(self):
        host = start(HOVEX)
        try:
            # Until it is ready the system starts others for those who come.
            for _ in range(20):
                self.assertEqual(["ids: 1 1"], self.client("calls")[:1])
                if host.poll() is not None:
                    break
            self.assertEqual(0, host.wait(timeout=10))
        finally:
            if host.poll() is None:
                host.kill()
            host.communicate()


if __name__ == "__main__":
    main()
