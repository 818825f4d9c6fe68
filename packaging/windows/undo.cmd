@echo off
rem Puts everything back as it was before set-up.cmd. With /q it does not wait for a key at the end.
cscript //nologo //E:JScript "%~dp0set-up.js" undo
set status=%errorlevel%
if not "%1"=="/q" pause
exit /b %status%
