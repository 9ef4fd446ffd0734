from desk import Desk, Expect

with Desk() as desk:
    main = desk.Window("Form1")
    desk.CloseRequest()
    # It is still there, answers, and the same request closes another window.
    main.Menu("About")
    about = desk.Window("about_form")
    desk.CloseRequest()
    about.WaitGone()
    Expect(desk.Windows(), ["VANTREL MAIN"], "windows")
