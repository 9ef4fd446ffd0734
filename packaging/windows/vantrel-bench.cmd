@echo off
rem Starts VANTREL on the simulated bench, or on the one that a file describes.
setlocal EnableExtensions DisableDelayedExpansion
set "VANTREL_VISA=%~dp0bench\visa64.dll"
set "VANTREL_BENCH="
if "%~1"=="" goto start
if /i "%~1"=="--help" goto usage
if not "%~2"=="" goto too_many
if exist "%~f1" if not exist "%~f1\" set "VANTREL_BENCH=%~f1"
if not defined VANTREL_BENCH if exist "%~dp0bench\benches\%~1.bench" set "VANTREL_BENCH=%~dp0bench\benches\%~1.bench"
if not defined VANTREL_BENCH goto unknown

:start
rem Records are kept beside the program where it has a folder for them, else where those of the Start menu's entry are.
if exist "%~dp0db\" goto beside
start "" "%~dp0vantrel.exe" --folder "%USERPROFILE%\VANTREL"
exit /b
:beside
start "" "%~dp0vantrel.exe"
exit /b

:usage
echo Usage: vantrel-bench [FILE]
echo Starts VANTREL on the simulated bench, or on the one that FILE describes.
echo These come with the program and can be given by name:
pushd "%~dp0bench\benches"
for %%f in (*.bench) do echo   %%~nf
popd
exit /b

:too_many
>&2 echo vantrel-bench: more than one bench file; vantrel-bench --help tells what there is
goto failed

:unknown
>&2 echo vantrel-bench: there is no bench file "%~1"; vantrel-bench --help tells what there is

:failed
rem A console that Explorer opened for this file closes at its end: leave time to read. Only that one was begun with /c "".
set "begun=%cmdcmdline:"='%"
rem Wine does not tell how it was begun, and leaves a quote.
set "begun=%begun:"=%"
if not "%begun%"=="%begun:/c ''=%" "%SystemRoot%\System32\timeout.exe" /t 60
exit /b 2
