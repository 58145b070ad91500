-- From version 4 to 5: partners that are written without a grade or a region get the usual ones.
alter table D1102 add default N'1' for GRADE, default N'01' for ADDR_ID
alter table D1103 add default N'1' for GRADE, default N'01' for ADDR_ID
update SYS_VERSION set VERSION = 5
go
