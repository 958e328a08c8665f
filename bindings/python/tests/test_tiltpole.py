"""The package upon the built library."""

import gc
import math
import pathlib
import sys
import tempfile
import unittest

import numpy as np

sys.path.insert(0, str(pathlib.Path(__file__).parent))

import simulated_pole  # noqa: E402
import tiltpole  # noqa: E402


class Positioning(unittest.TestCase):
    def setUp(self):
        horizontal, vertical = simulated_pole.turns()
        self.calibration = tiltpole.calibrate(horizontal, vertical)

    def test_tips_of_a_whole_session_lie_where_the_pole_stands(self):
        samples, truth = simulated_pole.leaning(np.arange(0, 360, 5.0), np.full(72, 8.0))
        measured = self.calibration.position().solve(samples, 2.0)
        self.assertEqual(measured.offset.shape, (72, 3))
        self.assertLess(np.abs(measured.offset - 2.0 * truth).max(), 0.02)

    def test_solving_leaves_the_given_samples_raw(self):
        samples, _ = simulated_pole.leaning([10.0], [5.0])
        before = samples.copy()
        measured = self.calibration.position().solve(samples, 2.0)
        self.assertTrue((samples == before).all())
        self.assertAlmostEqual(float(measured.samples["yaw_a"][0]), 10.0, delta=1.0)

    def test_a_pole_that_stands_still_is_told(self):
        samples, _ = simulated_pole.leaning([10.0, 10.0, 90.0], [5.0, 5.0, 5.0])
        measured = self.calibration.position().solve(samples, 2.0)
        self.assertEqual(measured.stationary.tolist(), [False, True, False])
        self.assertEqual(measured.interference.dtype, bool)

    def test_rigorous_tips_are_exact_where_the_model_is_not(self):
        samples, truth = simulated_pole.leaning(np.arange(0, 360, 5.0), np.full(72, 45.0))
        corrected = tiltpole.correct_samples(samples, self.calibration.correction_a,
                                             self.calibration.correction_b)
        tips = tiltpole.solve_rigorous_tips(corrected, 2.0, self.calibration.quality.tip_options)
        self.assertLess(np.abs(tips["offset"] - 2.0 * truth).max(), 0.05)
        self.assertTrue((tips["status"] == 0).all())
        quality = tiltpole.judge_points(corrected, 2.0, self.calibration.quality.tip_options)
        self.assertTrue((quality["north"] > 0).all())

    def test_a_solution_with_a_given_heading_starts_at_the_antenna(self):
        sample, _ = simulated_pole.leaning([0.0], [-10.0])
        sample["incline_x"], sample["incline_y"], sample["yaw_a"] = 10.0, 0.0, 0.0
        x, y, h = tiltpole.Position().solve_with_heading(sample, 2.0, antenna=(100.0, 200.0, 50.0))
        self.assertAlmostEqual(x, 100.0 + 2.0 * math.sin(math.radians(10)), places=9)
        self.assertAlmostEqual(y, 200.0, places=9)
        self.assertAlmostEqual(h, 50.0 - 2.0 * math.cos(math.radians(10)), places=9)

    def test_an_array_of_something_else_is_refused(self):
        with self.assertRaises(TypeError):
            tiltpole.Position().solve(np.zeros(3), 2.0)

    def test_a_slice_with_steps_is_taken_as_it_is(self):
        samples, _ = simulated_pole.leaning(np.arange(0, 40, 5.0), np.full(8, 8.0))
        every_other = self.calibration.position().solve(samples[::2], 2.0)
        alone = self.calibration.position().solve(samples[::2].copy(), 2.0)
        np.testing.assert_array_equal(every_other.offset, alone.offset)

    def test_angle_to_horizontal(self):
        self.assertEqual(tiltpole.angle_to_horizontal(0.0, 0.0), 90.0)


class Parameters(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = pathlib.Path(self.folder.name) / "mühle 東.txt"

    def test_parameters_survive_a_file_whose_name_is_not_ascii(self):
        position = tiltpole.Position()
        position.set_correction(tiltpole.Magnetometer.B, tiltpole.Correction(x0=12.5, b=0.9))
        position.translation = tiltpole.Translation(1.0, 2.0, 3.0)
        position.set_bias_angle(tiltpole.Magnetometer.A, -1.5)
        position.save(self.path)
        read = tiltpole.Position()
        read.read(self.path)
        self.assertEqual(read.correction(tiltpole.Magnetometer.B),
                         tiltpole.Correction(x0=12.5, b=0.9))
        self.assertEqual(read.translation, tiltpole.Translation(1.0, 2.0, 3.0))
        self.assertEqual(read.bias_angle(tiltpole.Magnetometer.A), -1.5)

    def test_a_missing_file_is_an_os_error(self):
        with self.assertRaises(OSError) as raised:
            tiltpole.Position().read(self.path)
        self.assertIsInstance(raised.exception, tiltpole.ParameterFileError)
        self.assertIn("could not be read", str(raised.exception))

    def test_entries_of_the_hosts_own(self):
        tiltpole.write_parameter_file(self.path, {"name": "Mühle", "length": 2.5, "count": -7})
        file = tiltpole.ParameterFile(self.path)
        self.assertEqual(file.read_string("name"), "Mühle")
        self.assertEqual(file.read_float("length"), 2.5)
        self.assertEqual(file.read_int("count"), -7)
        with self.assertRaises(LookupError):
            file.read_int("none")

    def test_a_magnetometer_that_there_is_not_is_a_value_error(self):
        with self.assertRaises(ValueError):
            tiltpole.Position().correction(2)


class Calibration(unittest.TestCase):
    def test_sensor_errors_are_found(self):
        horizontal, vertical = simulated_pole.turns()
        calibration = tiltpole.calibrate(horizontal, vertical)
        gain, offset = simulated_pole.ERRORS["a"]
        self.assertAlmostEqual(calibration.correction_a.x0, offset[0], delta=5.0)
        self.assertAlmostEqual(calibration.correction_a.b * gain[1, 1], 1.0, delta=0.01)
        self.assertLessEqual(calibration.quality.verdict, tiltpole.Verdict.USABLE)
        self.assertTrue(calibration.quality.calibrated)
        self.assertEqual(calibration.quality.samples, (300, 300))
        self.assertEqual(calibration.quality.a.heading_errors.shape, (72,))
        self.assertLess(calibration.quality.a.heading_root_mean_square, 1.0)
        self.assertAlmostEqual(calibration.quality.b.after[0].radius_mean, 2500.0, delta=25.0)

    def test_a_failure_says_why(self):
        horizontal, vertical = simulated_pole.turns()
        with self.assertNoLogs("tiltpole"), \
                self.assertRaises(tiltpole.CalibrationFailed) as raised:
            tiltpole.calibrate(horizontal[:3], vertical)
        failure = raised.exception
        self.assertGreater(len(failure.messages), 0)
        self.assertEqual(failure.quality.verdict, tiltpole.Verdict.UNUSABLE)
        self.assertFalse(failure.quality.calibrated)
        self.assertGreater(len(failure.quality.reasons[0].sentence), 10)

    def test_parameters_of_another_pole_are_found_out(self):
        horizontal, vertical = simulated_pole.turns()
        fitted = tiltpole.calibrate(horizontal, vertical)
        points, _ = simulated_pole.leaning(np.arange(0, 360, 20.0), np.full(18, 15.0))
        own = fitted.correction_a, fitted.correction_b
        self.assertEqual(tiltpole.check_parameters(points, *own), ())
        other = tiltpole.Correction(x0=900.0), tiltpole.Correction(y0=-700.0)
        self.assertGreater(len(tiltpole.check_parameters(points, *other)), 0)

    def test_gaps_in_a_turn_are_told(self):
        horizontal, vertical = simulated_pole.turns()
        plain = tiltpole.Correction(), tiltpole.Correction(), tiltpole.Translation()
        quality = tiltpole.judge_calibration(horizontal, vertical[:150], *plain)
        self.assertEqual(len(quality.missing[1]), 1)
        self.assertLess(quality.covered_percent[1], 60.0)


class Screening(unittest.TestCase):
    def test_a_turn_is_covered_thinned_and_complete(self):
        horizontal, vertical = simulated_pole.turns()
        for turn, samples in zip(tiltpole.Turn, (horizontal, vertical)):
            screening = tiltpole.Screening(turn)
            self.assertIsNone(screening.center)
            self.assertEqual(screening.coverage, 0)
            screening.add(samples)
            self.assertGreater(screening.coverage, 90)
            self.assertGreater(screening.center.radius, 2000.0)
            kept = screening.filter()
            even = screening.select(30)
            self.assertLessEqual(even.size, kept.size)
            self.assertTrue(screening.is_complete())
            np.testing.assert_array_equal(samples["magnetic_a"][screening.selected_indices],
                                          even["magnetic_a"])

    def test_nothing_usable_is_no_solution(self):
        with self.assertRaises(tiltpole.NoSolution):
            tiltpole.Screening(tiltpole.Turn.HORIZONTAL).filter()

    def test_clearing_empties_records_and_selection(self):
        horizontal, _ = simulated_pole.turns()
        screening = tiltpole.Screening(tiltpole.Turn.HORIZONTAL)
        screening.add(horizontal)
        screening.filter()
        screening.clear()
        self.assertEqual(screening.records.size, 0)
        self.assertEqual(screening.selected.size, 0)


class Transformation(unittest.TestCase):
    def test_a_similarity_is_found_and_undone(self):
        source = np.array([[0.0, 0.0], [10.0, 0.0], [0.0, 10.0], [7.0, 3.0]])
        turn = np.array([[0.0, -2.0], [2.0, 0.0]])
        target = source @ turn.T + [100.0, 200.0]
        transformation = tiltpole.Transformation()
        parameters = transformation.estimate(source, target)
        self.assertAlmostEqual(parameters.scale, 2.0)
        self.assertAlmostEqual(parameters.rotation, math.pi / 2)
        np.testing.assert_allclose(transformation.forward(source), target, atol=1e-9)
        np.testing.assert_allclose(transformation.inverse(target), source, atol=1e-9)

    def test_no_points_are_no_solution(self):
        with self.assertRaises(tiltpole.NoSolution):
            tiltpole.Transformation().estimate(np.zeros((0, 2)), np.zeros((0, 2)))

    def test_points_of_another_shape_are_refused(self):
        with self.assertRaises(ValueError):
            tiltpole.Transformation().forward(np.zeros(3))


class Package(unittest.TestCase):
    def test_package_and_library_are_of_one_version(self):
        self.assertEqual(tiltpole.__version__, tiltpole.library_version())

    def test_type_hints_are_marked_as_such(self):
        self.assertTrue(pathlib.Path(tiltpole.__file__).with_name("py.typed").exists())

    def test_records_have_the_librarys_size(self):
        self.assertEqual(tiltpole.SAMPLE.itemsize, 176)
        self.assertEqual(tiltpole.RIGOROUS_TIP.itemsize, 88)
        self.assertEqual(tiltpole.POINT_QUALITY.itemsize, 96)

    def test_many_objects_come_and_go(self):
        for _ in range(2000):
            tiltpole.Position()
            tiltpole.Transformation()
        gc.collect()

    def test_a_session_file_is_read_by_column_names(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "session.csv"
            path.write_text("set,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b,time,incline_y,"
                            "incline_x,note\nmeasure,1,2,3,4,5,6,10:20:30,7,8,hello\n",
                            encoding="utf-8")
            sample = tiltpole.read_session(path)["measure"][0]
        self.assertEqual(sample["magnetic_a"].tolist(), [1.0, 2.0, 3.0])
        self.assertEqual(sample["magnetic_b"].tolist(), [4.0, 5.0, 6.0])
        self.assertEqual(sample["time"].tolist(), [10, 20, 30])
        self.assertEqual((sample["incline_x"], sample["incline_y"]), (8.0, 7.0))


if __name__ == "__main__":
    unittest.main()
