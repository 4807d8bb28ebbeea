"""The velmar module: fields with their read checks, calculate, save, sweep."""
import math
import os
import tempfile
import unittest

import velmar

EXAMPLES = os.environ.get("VELMAR_EXAMPLES", os.path.join(os.path.dirname(__file__), "../../examples"))
CARGO = os.path.join(EXAMPLES, "cargo_ship_si.vxvl")


class FieldTest(unittest.TestCase):
    def test_refused_values_raise_with_the_word_and_keep_the_old_value(self):
        p = velmar.open(CARGO)
        cases = [  # class, field, refused value, word in the message
            ("hull", "LengthWL", 0.0, "Length on waterline"),
            ("hull", "BeamWLMax", -3.0, "Max beam on waterline"),
            ("propeller", "Diameter", float("nan"), "Propeller diameter"),
        ]
        for cls, field, value, word in cases:
            with self.subTest(field=field):
                fields = getattr(p, cls)
                before = getattr(fields, field)
                with self.assertRaisesRegex(ValueError, word):
                    setattr(fields, field, value)
                self.assertEqual(getattr(fields, field), before)
        with self.assertRaisesRegex(ValueError, "Speed"):
            p.speeds = [12, -1]
        with self.assertRaises(AttributeError):
            p.hull.NoSuchField = 1
        with self.assertRaises(KeyError):
            p["Nowhere.LengthWL"]

    def test_values_are_in_the_project_units_and_survive_a_save(self):
        p = velmar.open(CARGO)
        self.assertEqual(p.unit("LengthWL"), "m")
        p.hull.LengthWL = 210.5
        p["Propeller.Diameter"] = 7.25
        p.speeds = [15, 17]
        with tempfile.TemporaryDirectory() as d:
            path = os.path.join(d, "changed.vxvl")
            p.save(path)
            q = velmar.open(path)
        self.assertEqual((q.hull.LengthWL, q.propeller.Diameter, q.speeds), (210.5, 7.25, [15.0, 17.0]))


class CalculateTest(unittest.TestCase):
    def test_rows_and_columns_agree_and_follow_the_hull(self):
        p = velmar.open(CARGO)
        p.speeds = [14, 18, 22]
        r = p.calculate()
        self.assertTrue(r.ok, r.warning)
        self.assertEqual(len(r), 3)
        self.assertEqual([row["Speed"] for row in r], [14.0, 18.0, 22.0])
        drag = r["DragTotal"]
        self.assertEqual(list(drag), [row["DragTotal"] for row in r.rows])
        self.assertTrue(all(a < b for a, b in zip(drag, drag[1:])))
        self.assertEqual(r.units["DragTotal"], "kN")
        p.hull.LengthWL = 0.8 * p.hull.LengthWL
        self.assertNotEqual(list(p.calculate()["DragTotal"]), list(drag))


class SweepTest(unittest.TestCase):
    def test_grid_order_refused_variants_and_agreement_with_calculate(self):
        p = velmar.open(CARGO)
        s = velmar.sweep(p, {"LengthWL": (0, 200, 3), "Speed": (16, 20, 2)}, jobs=2)
        self.assertEqual(len(s), 6)
        self.assertEqual([(row["LengthWL"], row["Speed"], row["Variant"]) for row in s],
                         [(0, 16, 0), (0, 20, 1), (100, 16, 2), (100, 20, 3), (200, 16, 4), (200, 20, 5)])
        self.assertFalse(s[0]["Ok"])
        self.assertIn("Length on waterline", s[0]["Warning"])
        self.assertTrue(math.isnan(s[0]["DragTotal"]))
        p.hull.LengthWL = 200
        p.speeds = [20]
        self.assertEqual(s[5]["DragTotal"], p.calculate()[0]["DragTotal"])
        shards = [velmar.sweep(p, {"BeamWLMax": (28, 34, 7)}, shard=f"{k}/3") for k in (1, 2, 3)]
        self.assertEqual(sorted(row["Variant"] for part in shards for row in part.rows),
                         sorted(row["Variant"] for row in velmar.sweep(p, {"BeamWLMax": (28, 34, 7)}).rows))


if __name__ == "__main__":
    unittest.main()
