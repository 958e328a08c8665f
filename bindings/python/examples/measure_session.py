import tiltpole

session = tiltpole.read_session("survey.csv")
calibration = tiltpole.calibrate(session["horizontal"], session["vertical"])
print(calibration.quality.verdict.name, calibration.quality.a.heading_root_mean_square)

measured = calibration.position().solve(session["measure"], pole_length=2.0)
print(measured.offset)  # n x 3: along heading 0, heading 90 and upwards, from the antenna
