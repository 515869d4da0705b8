#!/usr/bin/env python3
"""The commands that write events, from end to end on a fresh data folder.

Usage: events_test.py LOREBINDER_CLI [unittest arguments]"""
import json
import shutil
import time

from cli_world import FreshTest, main_fresh, number, text, version

# Long after any day on which this runs: reminders are for what is to come.
YEAR = "2049"


def event_bytes(ident, recurring, kind, start, end, last, patterns, series="", all_day=0):
    """A record as it stands in Events.dat; the series begins at its start."""
    return (b"".join(map(number, (1, all_day, recurring, kind))) + text(start) + text(end) + text(start) + text(last) +
            b"".join(number(len(pattern)) + b"".join(map(number, pattern)) for pattern in patterns) +
            text(ident) + text(series) + text("Class") + text(""))


class Events(FreshTest):
    def lines(self):
        return [f'{e["Start"][5:16]} {e["Label"]}' for e in sorted(self.json("events"), key=lambda e: e["Start"])]

    def series(self):
        """Four Mondays from 4 January, an hour each, with a popup."""
        return self.json("event", "add", "--label", "Class", "--start", f"{YEAR}-01-04T09:05", "--repeat", "weekly",
                         "--until", f"{YEAR}-01-25", "--popup", 30)

    def files(self):
        return [path.read_bytes() for path in sorted((self.data / "Data Files").glob("*.dat"))]

    def assert_reminders_fit(self):
        events = {event["EventId"]: [event[key] for key in ("Start", "Label", "Description")]
                  for event in self.json("events")}
        reminders = self.json("reminders")
        for reminder in reminders:
            copies = [reminder[key] for key in ("EventStart", "EventLabel", "EventDescription")]
            self.assertEqual(events.get(reminder["EventId"]), copies)
        self.assertEqual(len({(one["EventId"], one["SendTime"]) for one in reminders}), len(reminders), "none is twice")

    def test_check_finds_damaged_files_of_the_calendar(self):
        self.series()
        self.run_cli("check")
        for name in ("Events.dat", "Rem.dat"):
            file = self.data / "Data Files" / name
            whole = file.read_bytes()
            file.write_bytes(whole[:-7])
            self.assertEqual(self.run_cli("check", status=1).stdout.decode(), f"{file}: the file is short or damaged\n")
            file.write_bytes(whole)

    def test_an_event_has_what_was_given(self):
        ids = self.json("event", "add", "--label", "Caf\u00e9", "--start", f"{YEAR}-05-01T09:05", "--end",
                        f"{YEAR}-05-01T10:00", "--color", 7, "--description", "\u4e2d\nTwo", "--popup", 60, "--popup", 0)
        event, = self.json("events")
        self.assertEqual(ids, [event["EventId"]])
        self.assertEqual([event[key] for key in ("Start", "End", "Label", "Description", "BarColor", "AllDay",
                                                 "Recurring", "RecurrenceType", "DailyPattern")],
                         [f"{YEAR}-05-01T09:05:00", f"{YEAR}-05-01T10:00:59", "Caf\u00e9", "\u4e2d\nTwo", 7, 0, 0, -1,
                          [-1, -1, -1]])
        self.assertEqual([(r["SendTime"], r["PriorMinutes"], r["EventLabel"]) for r in self.json("reminders")],
                         [(f"{YEAR}-05-01T08:05:00", 60, "Caf\u00e9"), (f"{YEAR}-05-01T09:05:00", 0, "Caf\u00e9")])

    def test_times_that_are_not_given_follow(self):
        for given, start, end, all_day in [
                (["--start", f"{YEAR}-05-01"], "01T00:00:00", "01T23:59:59", 1),
                (["--start", f"{YEAR}-05-01", "--end", f"{YEAR}-05-03"], "01T00:00:00", "03T23:59:59", 1),
                (["--start", f"{YEAR}-05-01T09:30"], "01T09:30:00", "01T10:30:59", 0),
                (["--start", f"{YEAR}-05-01T23:30"], "01T23:30:00", "01T23:50:59", 0),
                (["--start", f"{YEAR}-05-01T09:30", "--all-day"], "01T00:00:00", "01T23:59:59", 1)]:
            with self.subTest(given=given):
                ident, = self.json("event", "add", "--label", "A", *given)
                event = next(e for e in self.json("events") if e["EventId"] == ident)
                self.assertEqual([event["Start"], event["End"], event["AllDay"]],
                                 [f"{YEAR}-05-{start}", f"{YEAR}-05-{end}", all_day])

    def test_each_rhythm_expands(self):
        for args, dates in [
                (["--repeat", "daily", "--every", 2, "--until", f"{YEAR}-01-08"], ["01-01", "01-03", "01-05", "01-07"]),
                (["--repeat", "weekdays", "--until", f"{YEAR}-01-05"], ["01-01", "01-04", "01-05"]),
                (["--repeat", "weekly", "--days", "mon,FRI", "--every", 2, "--until", f"{YEAR}-01-20"],
                 ["01-01", "01-11", "01-15"]),
                (["--repeat", "monthly", "--until", f"{YEAR}-03-05"], ["01-01", "02-01", "03-01"]),
                (["--repeat", "monthly-weekday", "--until", f"{YEAR}-03-09"], ["01-01", "02-05", "03-05"]),
                (["--repeat", "yearly"], ["01-01", "01-01"]),
                (["--repeat", "yearly-weekday", "--until", "2050-12-31"], ["01-01", "01-07"])]:
            with self.subTest(args=args):
                before = self.json("events") if (self.data / "Data Files").exists() else []
                ids = self.json("event", "add", "--label", "S", "--start", f"{YEAR}-01-01T08:00", *args)
                new = [event for event in self.json("events") if event not in before]
                self.assertEqual([event["EventId"] for event in new], ids)
                self.assertEqual([event["Start"][5:10] for event in new], dates)
                self.assertEqual(len({event["SeriesId"] for event in new}), 1)

    def test_a_change_reaches_as_far_as_it_is_told(self):
        for reach, labels in [("--this", ["Class", "New", "Class", "Class"]), ("--following", ["Class"] + 3 * ["New"]),
                              ("--all", 4 * ["New"])]:
            with self.subTest(reach=reach):
                shutil.rmtree(self.data, ignore_errors=True)
                ids = self.series()
                self.assertEqual(self.json("event", "edit", ids[1], "--label", "New", reach), {"EventId": ids[1]})
                self.assertEqual([line[12:] for line in self.lines()], labels)
                self.assertEqual([event["EventId"] for event in self.json("events")], ids)
                self.assert_reminders_fit()
        for reach, starts in [("--this", ["04 09:05", "12 10:00", "18 09:05", "25 09:05"]),
                              ("--following", ["04 09:05", "12 10:00", "19 10:00", "26 10:00"]),
                              ("--all", ["05 10:00", "12 10:00", "19 10:00", "26 10:00"])]:
            with self.subTest(reach=reach):
                shutil.rmtree(self.data, ignore_errors=True)
                ids = self.series()
                self.run_cli("event", "edit", ids[1], "--start", f"{YEAR}-01-12T10:00", "--end", f"{YEAR}-01-12T12:00",
                             "--days", "TUE", "--until", f"{YEAR}-01-31", reach)
                self.assertEqual([line[3:11].replace("T", " ") for line in self.lines()], starts)
                self.assert_reminders_fit()
                self.assertEqual(len(self.json("reminders")), 4)
                ids = [event["EventId"] for event in self.json("events")]
                named = self.json("event", "edit", ids[1], "--end", f"{YEAR}-01-12T13:00", reach)
                self.assertLessEqual(set(named if reach != "--this" else [named["EventId"]]),
                                     {event["EventId"] for event in self.json("events")})
                self.assertEqual(len(named), {"--this": 1, "--following": 3, "--all": 4}[reach])

    def test_a_start_alone_moves_one_event_and_says_so(self):
        late, early = "12 10:00", "10 08:00"
        for reach, moved, more, says in [
                ("--this", late, [], 0), ("--following", late, [], 1), ("--all", late, [], 1),
                ("--all", late, ["--label", "New"], 1), ("--following", late, ["--label", "New"], 1),
                ("--following", early, ["--popup", 20], 1)]:
            with self.subTest(reach=reach, moved=moved, more=more):
                shutil.rmtree(self.data, ignore_errors=True)
                ids = self.series()
                edit = ["event", "edit", ids[1], reach]
                done = self.run_cli(*edit, "--start", f"{YEAR}-01-{moved}", *more)
                self.assertEqual([line[3:11].replace("T", " ") for line in self.lines()],
                                 ["04 09:05", moved, "18 09:05", "25 09:05"])
                told = done.stderr.splitlines()
                self.assertEqual([b"only this event has moved" in line for line in told], [True] * says)
                self.assert_reminders_fit()
                self.assertEqual(self.run_cli(*edit, "--start", f"{YEAR}-01-{moved}").stderr, b"", "it stays there")
                anew = self.run_cli(*edit, "--start", f"{YEAR}-01-13T10:00", "--until", f"{YEAR}-02-08")
                self.assertEqual(anew.stderr, b"", "the series is made anew, or one event was meant")

    def test_an_event_leaves_its_series_alone_and_says_so(self):
        for reach, says in [("--this", 0), ("--following", 1), ("--all", 1)]:
            with self.subTest(reach=reach):
                shutil.rmtree(self.data, ignore_errors=True)
                ids = self.series()
                edit = ["--json", "event", "edit", ids[1], reach, "--no-repeat"]
                done = self.run_cli(*edit, "--start", f"{YEAR}-01-12", "--label", "New")
                self.assertEqual([event["Recurring"] for event in self.json("events")], [1, 0, 1, 1])
                self.assertEqual([b"only this event has changed" in line for line in done.stderr.splitlines()],
                                 [True] * says)
                self.assertEqual(json.loads(done.stdout), {"EventId": ids[1]})
                self.assertEqual(self.run_cli(*edit, "--label", "Newer").stderr, b"", "it belongs to none")
                self.assertEqual(self.run_cli("event", "edit", ids[0], reach, "--no-repeat", "--repeat", "daily").stderr,
                                 b"", "it is a series in the end")

    def test_a_series_without_a_last_day_says_how_far_it_goes(self):
        start = ["--start", f"{YEAR}-01-04T09:05"]
        for repeat, says in [(["weekly"], b"up to 01/04/2049, with 1 event;"), (["daily"], b"01/05/2049, with 2 events;"),
                             (["daily", "--every", 3], b"01/07/2049, with 2 events;"),
                             (["yearly"], b"01/04/2050, with 2 events;"), (["daily", "--until", f"{YEAR}-01-05"], b"")]:
            with self.subTest(repeat=repeat):
                done = self.run_cli("--json", "event", "add", "--label", "A", *start, "--repeat", *repeat)
                self.assertIn(says, done.stderr)
                self.assertEqual((done.stderr == b"", len(json.loads(done.stdout)) > 0), (says == b"", True))
        ident, = self.json("event", "add", "--label", "A", *start)
        done = self.run_cli("event", "edit", ident, "--repeat", "weekly")
        self.assertIn(b"up to 01/04/2049, with 1 event; --until", done.stderr)
        again = self.run_cli("event", "edit", done.stdout.decode().strip(), "--all", "--repeat", "daily")
        self.assertEqual(again.stderr, b"", "the series keeps its last day")

    def test_a_label_alone_leaves_odd_times_as_they_are(self):
        """Whole days that begin at a quarter past nine, an end at its start, and one before it."""
        events = self.data / "Data Files" / "Events.dat"
        events.parent.mkdir(parents=True)
        start = "2011-01-03-09-15-00"
        for end, all_day in [("2011-01-03-17-00-59", 1), ("2011-01-03-09-15-59", 0), ("2011-01-02-09-15-59", 0)]:
            with self.subTest(end=end):
                days = [[1, 0, 1], [-1] * 8, [-1] * 7, [-1] * 7]
                whole = version(11.56) + number(2) + b"".join(
                    event_bytes(name, 1, 0, start, end, "2011-01-04-09-15-00", days, "{S}", all_day)
                    for name in ("{A}", "{B}"))
                events.write_bytes(whole)
                self.run_cli("event", "edit", "{A}", "--all", "--label", "New")
                self.assertEqual(events.read_bytes(), whole.replace(text("Class"), text("New")))

    def test_deleting_reaches_as_far_as_it_is_told(self):
        for reach, left in [("--this", 3), ("--following", 1), ("--all", 0)]:
            with self.subTest(reach=reach):
                shutil.rmtree(self.data, ignore_errors=True)
                ids = self.series()
                alone = self.json("event", "add", "--label", "Alone", "--start", f"{YEAR}-01-11")
                self.assertEqual(self.json("event", "delete", ids[1], reach), {"EventId": ids[1]})
                self.assertEqual(len(self.json("events")), left + 1)
                self.assertEqual(len(self.json("reminders")), left)
                self.run_cli("event", "delete", alone[0])
                self.assert_reminders_fit()
                self.assertEqual(len(self.json("events")), left)

    def test_a_single_event_becomes_a_series_and_leaves_it(self):
        ident, = self.json("event", "add", "--label", "A", "--start", f"{YEAR}-01-03T09:00", "--popup", 10)
        self.run_cli("event", "edit", ident, "--start", f"{YEAR}-01-04")  # keeps its time of day
        self.run_cli("event", "edit", ident, "--repeat", "daily", "--until", f"{YEAR}-01-06")
        self.assertEqual(self.lines(), ["01-04T09:00 A", "01-05T09:00 A", "01-06T09:00 A"])
        self.assert_reminders_fit()
        second = self.json("events")[1]["EventId"]
        self.run_cli("event", "edit", second, "--no-repeat", "--no-reminders", "--this")
        self.assertEqual([event["Recurring"] for event in self.json("events")], [1, 0, 1])
        self.assertEqual(len(self.json("reminders")), 2)

    def test_what_cannot_be_done_is_said_and_changes_nothing(self):
        ids = self.series()
        before = self.files()
        base = ["event", "add", "--label", "A", "--start", f"{YEAR}-01-31"]
        for args, status, words in [
                (["event", "edit", ids[0], "--label", "B"], 2, b"--following"),
                (["event", "delete", ids[0]], 2, b"--following"),
                (["event", "edit", ids[0], "--this", "--all", "--label", "B"], 2, b"excludes"),
                (["event", "edit", "{none}", "--label", "B"], 1, b"no event {none}"),
                (["event", "delete", "{none}", "--all"], 1, b"no event {none}"),
                (["event", "add", "--label", "A", "--start", "tomorrow"], 2, b"YYYY-MM-DD"),
                (["event", "add", "--label", " ", "--start", f"{YEAR}-01-31"], 2, b"--label"),
                (["event", "edit", ids[1], "--this", "--label", ""], 2, b"--label"),
                (["event", "add", "--label", "A", "--start", "2001-01-31", "--popup", 5], 2, b"already started"),
                ([*base, *(part for minutes in range(5) for part in ("--popup", minutes))], 2, b"Only 4 Reminders"),
                ([*base, "--until", "x"], 2, b"YYYY-MM-DD"),
                ([*base, "--color", 21], 2, b"--color"),
                ([*base, "--popup", -5], 2, b"in range 0 to 2147483647"),
                ([*base, "--end", f"{YEAR}-01-30"], 2, b"--end is before"),
                (["event", "add", "--label", "A", "--start", f"{YEAR}-01-31T09:30", "--end", f"{YEAR}-01-31T09:00"], 2,
                 b"--end is before"),
                (["event", "edit", ids[1], "--this", "--end", f"{YEAR}-01-10T23:00"], 2, b"--end is before"),
                ([*base, "--every", 2], 2, b"--repeat as well"), ([*base, "--days", "MON"], 2, b"--repeat as well"),
                ([*base, "--until", f"{YEAR}-03-01"], 2, b"--repeat as well"),
                ([*base, "--repeat", "daily", "--days", "MON"], 2, b"takes no --days"),
                ([*base, "--repeat", "weekdays", "--every", 2], 2, b"takes no --every"),
                ([*base, "--repeat", "daily", "--until", f"{YEAR}-01-30"], 2, b"--until is before"),
                ([*base, "--repeat", "hourly"], 2, b"--repeat"),
                ([*base, "--repeat", "weekly", "--days", "TUE", "--until", f"{YEAR}-02-01"], 1, b"No event falls"),
                (["event", "edit", ids[1], "--all", "--days", "TUE", "--until", f"{YEAR}-01-04"], 1, b"No event falls")]:
            with self.subTest(args=args):
                self.assertIn(words, self.run_cli(*args, status=status).stderr)
                self.assertEqual(self.files(), before)

    def test_a_reminder_that_the_server_does_not_change_is_a_fault(self):
        ids = self.series()
        alone, = self.json("event", "add", "--label", "Alone", "--start", f"{YEAR}-01-11")
        reminders = self.data / "Data Files" / "Rem.dat"
        start = f"{YEAR}-01-11-00-00-00"

        def email(event):
            return (b"".join(map(number, (1, 60, 7, -1, 0))) +
                    b"".join(map(text, (start, start, start, "{R" + event, "a@b.example", "a@b.example", "", event, "", "",
                                        ""))))

        for args, left in [(["edit", alone, "--no-reminders"], 5), (["delete", alone], 4), (["delete", ids[1], "--this"], 3),
                           (["delete", ids[0], "--all"], 0)]:
            with self.subTest(args=args):
                events = [event["EventId"] for event in self.json("events")]
                reminders.write_bytes(version(11.56) + number(len(events)) + b"".join(map(email, events)))
                done = self.run_cli("--json", "event", *args, status=3)
                self.assertIn(b"No reminder server is set up", done.stderr)
                self.assertEqual(json.loads(done.stdout), {"EventId": args[1]}, "the event is done all the same")
                self.assertEqual(len(self.json("events")), left)
        ident, = self.json("event", "add", "--label", "Alone", "--start", f"{YEAR}-01-11")
        reminders.write_bytes(version(11.56) + number(1) + email(ident))
        (self.data / "settings.ini").write_text("[Reminders]\nServer=http://127.0.0.1:1/\n")
        begin = time.monotonic()
        done = self.run_cli("event", "edit", ident, "--repeat", "daily", "--until", f"{YEAR}-01-12", status=3)
        self.assertIn(b"not all reminders could be updated", done.stderr)
        self.assertGreater(time.monotonic() - begin, 0.8, "the server got no time before the second test")

    def test_a_series_of_more_dates_than_it_can_have_says_so(self):
        file = self.top / "Events.dat"
        for last, says in [("1873-10-15", b""), ("1873-10-16", b"{A} goes on after its first 100000 dates"),
                           ("2200-01-01", b"{A} goes on after its first 100000 dates")]:
            with self.subTest(last=last):
                file.write_bytes(version(11.56) + number(1) + event_bytes(
                    "{A}", 1, 0, "1600-01-01-09-05-00", "1600-01-01-10-00-00", f"{last}-09-05-00",
                    [[1, 0, 1], [], [], []]))
                done = self.run_cli("--json", "expand", file)
                self.assertEqual(done.stdout.count(b"T09:05:00"), 100000)
                self.assertIn(says, done.stderr)
                self.assertEqual(done.stderr == b"", says == b"")

    def test_expand_shows_the_dates_that_each_record_makes(self):
        nine, ten = "2011-01-03-09-05-00", "2011-01-03-10-00-59"
        file = self.top / "Events.dat"

        def expanded(*records):
            file.write_bytes(version(11.56) + number(len(records)) + b"".join(records))
            return {e["EventId"]: e["occurrences"] for e in self.json("expand", file)}

        daily = expanded(event_bytes("{A}", 1, 0, nine, ten, "2011-01-07-09-05-00", [[1, 0, 2], [], [], []]))
        self.assertEqual(daily, {"{A}": [[f"2011-01-{day}T09:05:00", f"2011-01-{day}T10:00:59"]
                                         for day in ("03", "05", "07")]})
        # A last day at midnight comes before the series' time of day.
        self.assertEqual(len(expanded(event_bytes("{A}", 1, 0, nine, ten, "2011-01-07-00-00-00",
                                                  [[1, 0, 2], [], [], []]))["{A}"]), 2)
        odd = expanded(event_bytes("{single}", 0, 0, nine, ten, ten, [[1, 0, 1], [], [], []]),
                       event_bytes("{marked}", 2112, 0, nine, ten, ten, [[1, 0, 1], [], [], []]),
                       event_bytes("{type}", 1, 4, nine, ten, ten, [[1, 0, 1], [], [], []]),
                       event_bytes("{short}", 1, 2, nine, ten, "2012-01-03-09-05-00", [[], [], [1], []]),
                       event_bytes("{none}", 1, 0, nine, ten, "2012-01-03-09-05-00", [[1, 0, 0], [], [], []]),
                       event_bytes("{end}", 1, 0, nine, "2011-02-30-10-00-59", nine, [[1, 0, 1], [], [], []]))
        self.assertEqual(odd, {"{type}": [], "{short}": [], "{none}": [["2011-01-03T09:05:00", "2011-01-03T10:00:59"]],
                               "{end}": [["2011-01-03T09:05:00", "invalid"]]})
        self.assertEqual(self.run_cli("expand", self.top / "absent.dat", status=3).stdout, b"")

    def test_a_range_leaves_out_only_what_covers_it(self):
        for label, first, last in [("before", "01-01", "01-02"), ("covers", "01-01", "12-30"), ("into", "01-01", "06-10"),
                                   ("inside", "06-05", "06-06"), ("behind", "11-01", "11-02")]:
            self.run_cli("event", "add", "--label", label, "--start", f"{YEAR}-{first}", "--end", f"{YEAR}-{last}")
        shown = self.json("events", "--from", f"{YEAR}-06-01", "--to", f"{YEAR}-06-30")
        self.assertEqual([event["Label"] for event in shown], ["before", "into", "inside", "behind"])
        edge = self.json("events", "--from", f"{YEAR}-01-01", "--to", f"{YEAR}-06-10T23:59:59")
        self.assertEqual(len(edge), 5)

    def test_a_file_that_cannot_be_read_is_left_alone(self):
        self.series()
        events = self.data / "Data Files" / "Events.dat"
        events.unlink()
        events.mkdir()
        self.assertIn(b"Events.dat", self.run_cli("event", "add", "--label", "A", "--start", f"{YEAR}-01-01",
                                                  status=3).stderr)


if __name__ == "__main__":
    main_fresh(__doc__)
