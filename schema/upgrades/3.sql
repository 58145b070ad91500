-- From version 2 to 3: a save whose answer was lost is found by its token.
alter table SYS_AUDIT add TOKEN nvarchar(36)
go
create index IX_SYS_AUDIT_TOKEN on SYS_AUDIT (TOKEN)
update SYS_VERSION set VERSION = 3
go
