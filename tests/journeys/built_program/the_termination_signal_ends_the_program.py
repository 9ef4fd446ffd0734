from desk import Desk, Expect

with Desk() as desk:
    desk.program.terminate()
    Expect(desk.WaitEnd(), 0, "exit status")
