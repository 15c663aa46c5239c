@echo off
rem Runs the tests on this machine and writes report.txt beside this file; README.txt says more.
cd /d "%~dp0"
bin\run_tests.exe %*
