# Read by CPack: all files of an archive carry one date, so that it is the same whenever it is made.
set(ENV{SOURCE_DATE_EPOCH} 1767225600)  # 2026-01-01 00:00:00
set(ENV{TZ} UTC)
