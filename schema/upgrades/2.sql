-- From version 1 to 2: costs have a right of their own, and the record of changes is found by key.
alter table SYS_RIGHT add R_COST bit not null default 0
create index IX_SYS_AUDIT_KEY on SYS_AUDIT (MODULE, KEY_VALUE)
go
-- Until now whoever could edit saw the costs.
update SYS_RIGHT set R_COST = R_EDIT
update SYS_VERSION set VERSION = 2
go
