@echo off
rem Runs Talvenor's tests on this Windows: start it by a double click, in a folder on a local disk.
rem What comes out is results.txt, beside this file.
rem
rem   run.cmd                    everything
rem   run.cmd --only app.        the suites whose names begin like this; without waiting for a key at the end

setlocal EnableExtensions DisableDelayedExpansion
title Talvenor - tests
set "here=%~dp0"

rem cmd.exe has no current folder on another computer: what the tests start would run in the Windows folder.
if "%here:~0,2%"=="\\" goto network
cd /d "%~dp0"
rem Double-clicked inside the zip, Explorer unpacks this file alone.
if not exist run_tests.exe goto alone

.\run_tests.exe %*
set "outcome=%errorlevel%"
goto end

:network
echo This folder is on another computer. Copy it to a disk of this one, and start run.cmd there.
set "outcome=2"
goto end

:alone
echo run_tests.exe is not beside this file. Unpack the whole zip into a folder, and start run.cmd there.
set "outcome=2"

:end
if "%~1"=="" pause
exit /b %outcome%
